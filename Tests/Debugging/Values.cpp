// Values for a debugger to look at. The test stops in `lookAt` and goes one frame up.

#include "Orrenby/Platform/Drawing/IndexPath.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Orrenby/Utilities/Identifier.hpp"
#include "Orrenby/Utilities/JSON/JSONObject.hpp"
#include "Orrenby/Utilities/OrderedSet.hpp"
#include "Orrenby/Utilities/Streams/Payload.hpp"
#include <string>

using namespace orrenby;

struct User {
    using IdentifierType = std::string;
    Identifier<User> id = "ada";
    bool operator==(const User&) const = default;
};
template <> struct std::hash<User> {
    std::size_t operator()(const User& user) const { return std::hash<Identifier<User>>{}(user.id); }
};
struct Place {
    int row = 3;
};

// Keeps the compiler from doing away with a value.
template <class... Values> __attribute__((noinline)) void lookAt(const Values&... values)
{
    (static_cast<void>(
         *static_cast<const volatile unsigned char*>(static_cast<const volatile void*>(&values))),
        ...);
}

int main()
{
    const Any nothing;
    const Any yes = true;
    const Any number = 42;
    const Any half = 0.5;
    const Any text = "said \"so\"";
    const Any moment = Date(1577934245.678);
    const Any list = Array{1, "two"};
    const Any place = Place();
    const auto dictionary = Dictionary{{"name", "Ann"}, {"years", 30}};
    const auto empty = Dictionary();
    const auto set = NSSet{1, 2};
    const auto ordered = OrderedSet<int>{3, 1, 2};
    const auto late = Date(1e18);
    const auto uuid = *UUID::make("E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
    const auto url = *URL::make("https://example.com/a?b=c");
    const auto address = *EmailAddress::make({.stringValue = "ada@example.com"});
    const auto path = IndexPath({.item = 2, .section = 1});
    const auto error = NSError("example", 7, {{"why", "rain"}});
    const auto success = Result<int, std::string>::success(5);
    const auto failure = Result<int, std::string>::failure("broken");
    const auto value = Streams::Payload<int, std::string>::value(6);
    const auto mishap = Streams::Payload<int, std::string>::error("late");
    const User user;
    const auto object = JSONObject{{"a", 1}};
    lookAt(nothing, yes, number, half, text, moment, list, place, dictionary, empty, set, ordered, late, uuid,
        url, address, path, error, success, failure, value, mishap, user, object);
}
