#pragma once

/// @file
/// Observable objects for the tests of observing.

#include "Orrenby/Platform/Observing/Computed.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include "Tests/Support/Recorder.hpp"
#include <string>
#include <utility>

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

} // namespace orrenby::tests
