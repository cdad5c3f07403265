#pragma once

/// @file
/// Objects to observe, and an observer that costs next to nothing.

#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include <string>

namespace orrenby::benchmarks {

class Part : public ObservableObject {
public:
    Property<int, "size"> size{*this};
};

class Whole : public ObservableObject {
public:
    Property<Ref<Part>, "part"> part{*this};
};

class Counting : public KeyValueObserver {
public:
    void observeValue(const std::string&, ObservableObject&, const KeyValueChange&) override { ++calls; }
    long calls = 0;
};

inline constexpr ObservingOptions oldAndNew{.new_ = true, .old = true};

} // namespace orrenby::benchmarks
