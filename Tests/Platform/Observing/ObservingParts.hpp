#pragma once

/// @file
/// Observable objects and an observer that writes down what it is told.

#include "Orrenby/Platform/Observing/Computed.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::tests {

class Address : public ObservableObject {
public:
    explicit Address(std::string cityName = "Rome")
        : city(*this, std::move(cityName))
    {}

    Property<std::string, "city"> city;
};

class Person : public ObservableObject {
public:
    Property<int, "age"> age{*this, 18};
    Property<std::string, "name"> name{*this, "Ada"};
    Property<Ref<Address>, "address"> address{*this};
    Property<Ref<Person>, "friend"> friend_{*this};
    Computed<std::string, "title"> title{
        *this, [this] { return name.get() + ", " + std::to_string(age); }, {"name", "age"}};
};

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
