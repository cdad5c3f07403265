#pragma once

/// @file
/// A person to observe by key paths, and handlers that keep what they are told.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Observing/Computed.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

enum class Mood { Calm = 1, Cross = 2 };
enum class Compass { North, South };

class Entity : public ObservableObject {
public:
    Property<int, "identifier"> identifier{*this, 1};
};

class Person : public Entity {
public:
    Property<int, "age"> age{*this, 5};
    Property<std::optional<int>, "rank"> rank{*this};
    Property<Mood, "mood"> mood{*this, Mood::Calm};
    Property<std::optional<Mood>, "formerMood"> formerMood{*this};
    Property<Compass, "compass"> compass{*this};
    Property<Ref<Person>, "friend"> friend_{*this};
    Computed<int, "double"> double_{*this, [this] { return age * 2; }, {"age"}};
    int plain = 0;
};

/// Somebody, and what observes them.
struct ObservedPerson {
    Ref<Person> person = std::make_shared<Person>();
    Ref<KeyPathObserver<Person>> observer = make<KeyPathObserver<Person>>(person);
};

template <typename Value> using Seen = std::vector<KeyPathObservation<Value>>;

template <typename Value> auto addTo(Seen<Value>& seen)
{
    return [&seen](const KeyPathObservation<Value>& observation) { seen.push_back(observation); };
}

template <typename Value> auto initial(Value value) { return KeyPathObservation<Value>::initial(value); }
template <typename Value> auto change(Value oldValue, Value value)
{
    return KeyPathObservation<Value>::change({.value = value, .oldValue = oldValue});
}

} // namespace orrenby::testing

template <>
inline constexpr auto orrenby::allCases<orrenby::testing::Mood> = std::array{
    orrenby::testing::Mood::Calm, orrenby::testing::Mood::Cross};

template <> struct orrenby::RawRepresentation<orrenby::testing::Compass> {
    using Compass = orrenby::testing::Compass;
    using RawValue = std::string;
    static std::string rawValue(Compass value) { return value == Compass::North ? "N" : "S"; }
    static std::optional<Compass> make(const std::string& raw)
    {
        return raw == "N" ? std::optional(Compass::North) : std::optional(Compass::South);
    }
};
