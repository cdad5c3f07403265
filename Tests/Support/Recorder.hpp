#pragma once

/// @file
/// An observer that writes down what it is told.

#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Observing/KeyValueObserver.hpp"
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::tests {

inline std::string textOf(const std::optional<Any>& value)
{
    return value ? value->debugDescription() : "none";
}

/// Writes "age: 18 -> 19" for each change, "age: 18 ->" before it.
class Recorder : public KeyValueObserver {
public:
    void observeValue(
        const std::string& keyPath, ObservableObject& object, const KeyValueChange& change) override
    {
        told.push_back(keyPath + ": " + textOf(change.oldValue) + " ->"
            + (change.isPrior ? "" : " " + textOf(change.newValue)));
        objects.push_back(&object);
        if (onChange)
            onChange(change);
    }

    std::vector<std::string> told;
    std::vector<ObservableObject*> objects;
    std::function<void(const KeyValueChange&)> onChange;
};

constexpr ObservingOptions oldAndNew{.new_ = true, .old = true};

inline Ref<Recorder> makeRecorder(std::function<void(const KeyValueChange&)> onChange = nullptr)
{
    auto recorder = std::make_shared<Recorder>();
    recorder->onChange = std::move(onChange);
    return recorder;
}

} // namespace orrenby::tests
