#include "Orrenby/Platform/Objects/Any.hpp"

#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include <cmath>
#include <cxxabi.h>

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

} // namespace detail

namespace {

/// The 64-bit integer that is exactly `value`, if there is one.
std::optional<std::int64_t> exactInteger(double value) noexcept
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!(value >= -limit && value < limit) || value != std::trunc(value))
        return std::nullopt;
    return static_cast<std::int64_t>(value);
}

} // namespace

Any Any::parsedNumber(std::int64_t value)
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

std::optional<std::int64_t> Any::integerValue() const noexcept
{
    if (m_kind == Kind::Int)
        return m_content.integer;
    return m_kind == Kind::Double && m_isParsed ? exactInteger(m_content.number) : std::nullopt;
}

std::optional<double> Any::doubleValue() const noexcept
{
    if (m_kind == Kind::Double)
        return m_content.number;
    if (m_kind != Kind::Int || !m_isParsed)
        return std::nullopt;
    const auto value = static_cast<double>(m_content.integer);
    return exactInteger(value) == m_content.integer ? std::optional(value) : std::nullopt;
}

std::optional<float> Any::floatValue() const noexcept
{
    if (m_kind == Kind::Float)
        return m_content.single;
    const auto number = m_isParsed ? doubleValue() : std::nullopt;
    if (!number || !(std::fabs(*number) <= 3.4028234663852886e38)) // the largest float
        return std::nullopt;
    const auto value = static_cast<float>(*number);
    return static_cast<double>(value) == *number ? std::optional(value) : std::nullopt;
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
