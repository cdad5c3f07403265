#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include <cmath>
#include <cxxabi.h>
#include <limits>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

AnyBox::~AnyBox() = default;

const void* AnyBox::seenAs(const std::type_info& wanted) const noexcept
{
    if (staticType() == wanted)
        return address();
    const auto* from = dynamic_cast<const abi::__class_type_info*>(&staticType());
    const auto* to = dynamic_cast<const abi::__class_type_info*>(&wanted);
    if (from == nullptr || to == nullptr)
        return nullptr;
    // What the language does for two classes that are known at compile time, through the run-time library:
    // the search for any class of the whole object leaves out the bases of the class it starts from, so these
    // come first. -1: nothing is known about their relation.
    void* base = const_cast<void*>(address());
    if (staticType().__do_upcast(to, &base))
        return base;
    return isPolymorphic() ? abi::__dynamic_cast(address(), from, to, -1) : nullptr;
}

const LoggedContent* AnyBox::loggedContent() const noexcept
{
    return dynamic_cast<const LoggedContent*>(this);
}

LoggedContent::~LoggedContent() = default;

void LoggedContent::readError(std::optional<NSError>& /*error*/) const {}

} // namespace detail

namespace {

/// Whether the number is exactly such an integer; then also which.
template <typename Integer> bool isExactly(double number, Integer& value) noexcept
{
    using Limits = std::numeric_limits<Integer>;
    constexpr auto end = static_cast<double>(Limits::max()); // rounded up: 2^63 or 2^64
    if (!(number >= static_cast<double>(Limits::min()) && number < end) || number != std::trunc(number))
        return false;
    value = static_cast<Integer>(number);
    return true;
}

/// Whether a `double` holds all digits of the integer; then also which one.
template <typename Integer> bool isExactly(Integer integer, double& value) noexcept
{
    Integer same = 0;
    value = static_cast<double>(integer);
    return isExactly(value, same) && same == integer;
}

} // namespace

Any Any::parsedNumber(std::int64_t value)
{
    Any result(value);
    result.m_isParsed = true;
    return result;
}

Any Any::parsedNumber(std::uint64_t value)
{
    Any result(value);
    result.m_isParsed = true;
    return result;
}

Any Any::parsedNumber(double value)
{
    Any result(value);
    result.m_isParsed = true;
    return result;
}

void Any::keepText(std::string text)
{
    keepBox(Kind::Text, new detail::AnyBoxOf<std::string>(std::move(text)));
}

void Any::keepData(orrenby::Data data)
{
    keepBox(Kind::Bytes, new detail::AnyBoxOf<orrenby::Data>(std::move(data)));
}

void Any::keepList(std::vector<Any> list)
{
    keepBox(Kind::List, new detail::AnyBoxOf<std::vector<Any>>(std::move(list)));
}

void Any::keepDictionary(orrenby::Dictionary&& dictionary)
{
    keepBox(Kind::Dictionary, new detail::AnyBoxOf<orrenby::Dictionary>(std::move(dictionary)));
}

void Any::keepMembers(std::vector<std::pair<std::string, Any>> members)
{
    orrenby::Dictionary dictionary;
    dictionary.reserve(members.size());
    for (auto& [key, value] : members)
        dictionary.set(key, std::move(value));
    keepDictionary(std::move(dictionary));
}

void Any::keepSet(NSSet&& set) { keepBox(Kind::Set, new detail::AnyBoxOf<NSSet>(std::move(set))); }

std::string_view Any::text() const noexcept
{
    const auto* text = get<std::string>();
    return text != nullptr ? std::string_view(*text) : std::string_view();
}

bool Any::read(std::int64_t& value) const noexcept
{
    if (m_kind != Kind::Int)
        return m_kind == Kind::Double && m_isParsed && isExactly(m_content.number, value);
    value = m_content.integer;
    return true;
}

bool Any::read(std::uint64_t& value) const noexcept
{
    if (m_kind == Kind::Double)
        return m_isParsed && isExactly(m_content.number, value);
    const auto* large = get<std::uint64_t>();
    if (large == nullptr)
        return false;
    value = *large;
    return true;
}

bool Any::read(double& value) const noexcept
{
    if (m_kind == Kind::Double) {
        value = m_content.number;
        return true;
    }
    if (!m_isParsed)
        return false;
    const auto* large = get<std::uint64_t>();
    return large != nullptr ? isExactly(*large, value) : isExactly(m_content.integer, value);
}

bool Any::read(float& value) const noexcept
{
    if (m_kind == Kind::Float) {
        value = m_content.single;
        return true;
    }
    double number = 0;
    if (!m_isParsed || !read(number) || !(std::fabs(number) <= std::numeric_limits<float>::max()))
        return false;
    value = static_cast<float>(number);
    return static_cast<double>(value) == number;
}

const std::type_info& Any::type() const noexcept
{
    switch (m_kind) {
    case Kind::Null:
        return typeid(void);
    case Kind::Bool:
        return typeid(bool);
    case Kind::Int:
        return typeid(std::int64_t);
    case Kind::Float:
        return typeid(float);
    case Kind::Double:
        return typeid(double);
    case Kind::Date:
        return typeid(orrenby::Date);
    default:
        return m_content.box->type();
    }
}

std::string Any::typeName() const
{
    switch (m_kind) {
    case Kind::Null:
        return orrenby::typeName<NSNull>();
    case Kind::Bool:
        return orrenby::typeName<bool>();
    case Kind::Int:
        return orrenby::typeName<std::int64_t>();
    case Kind::Float:
        return orrenby::typeName<float>();
    case Kind::Double:
        return orrenby::typeName<double>();
    case Kind::Date:
        return orrenby::typeName<orrenby::Date>();
    case Kind::List:
        return orrenby::typeName<std::vector<Any>>();
    default:
        return m_content.box->typeName();
    }
}

std::string Any::description() const
{
    switch (m_kind) {
    case Kind::Null:
        return NSNull{}.description();
    case Kind::Bool:
        return describe(m_content.boolean);
    case Kind::Int:
        return describe(m_content.integer);
    case Kind::Float:
        return describe(m_content.single);
    case Kind::Double:
        return describe(m_content.number);
    case Kind::Date:
        return describe(m_content.date);
    default:
        return m_content.box->description();
    }
}

std::string Any::debugDescription() const
{
    if (m_kind == Kind::Date)
        return debugDescribe(m_content.date);
    return isShared() ? m_content.box->debugDescription() : description();
}

std::size_t Any::hash() const
{
    switch (m_kind) {
    case Kind::Null:
        return 0;
    case Kind::Bool:
        return m_content.boolean ? 1 : 2;
    case Kind::Int:
        return std::hash<std::int64_t>{}(m_content.integer);
    case Kind::Float:
        return std::hash<float>{}(m_content.single);
    case Kind::Double:
        return std::hash<double>{}(m_content.number);
    case Kind::Date:
        return std::hash<orrenby::Date>{}(m_content.date);
    case Kind::List: {
        std::size_t result = 0;
        for (const Any& element : *get<std::vector<Any>>())
            result = result * 31 + element.hash();
        return result;
    }
    case Kind::Bytes: {
        const auto& data = *get<orrenby::Data>();
        return std::hash<std::string_view>{}({reinterpret_cast<const char*>(data.data()), data.size()});
    }
    default:
        return m_content.box->hash();
    }
}

bool Any::equals(const Any& other) const
{
    if (m_kind != other.m_kind)
        return false;
    switch (m_kind) {
    case Kind::Null:
        return true;
    case Kind::Bool:
        return m_content.boolean == other.m_content.boolean;
    case Kind::Int:
        return m_content.integer == other.m_content.integer;
    case Kind::Float:
        return m_content.single == other.m_content.single;
    case Kind::Double:
        return m_content.number == other.m_content.number;
    case Kind::Date:
        return m_content.date == other.m_content.date;
    case Kind::Object:
        return m_content.box->equals(*other.m_content.box);
    default:
        return m_content.box->type() == other.m_content.box->type()
            && m_content.box->equals(*other.m_content.box);
    }
}

} // namespace orrenby
