#include "Orrenby/Platform/Errors/NSError.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

struct NSError::Contents {
    std::string domain;
    std::int64_t code;
    Dictionary userInfo;
};

namespace {

struct Registry {
    std::mutex mutex;
    std::map<std::string, UserInfoValueProvider, std::less<>> providers;
};

Registry& registry()
{
    static auto& registry = *new Registry;
    return registry;
}

std::optional<std::string> textIn(const Any& value)
{
    const auto* text = value.get<std::string>();
    return text ? std::optional(*text) : std::nullopt;
}

/// Of the error itself, or else of its domain's provider.
std::optional<std::string> localizedText(const NSError& error)
{
    if (auto text = textIn(error.userInfo()[NSLocalizedDescriptionKey]))
        return text;
    return textIn(NSError::userInfoValueProvider(error.domain())(error, NSLocalizedDescriptionKey));
}

} // namespace

NSError::NSError(std::string_view domain, std::int64_t code, Dictionary userInfo)
    : m_contents(std::make_shared<const Contents>(Contents{std::string(domain), code, std::move(userInfo)}))
{}

NSError::~NSError() = default;

const std::string& NSError::domain() const noexcept { return m_contents->domain; }

std::int64_t NSError::code() const noexcept { return m_contents->code; }

const Dictionary& NSError::userInfo() const noexcept { return m_contents->userInfo; }

std::string NSError::localizedDescription() const
{
    if (auto text = localizedText(*this))
        return *std::move(text);
    return "The operation could not be completed. (" + domain() + " error " + std::to_string(code()) + ".)";
}

std::optional<NSError> NSError::underlyingError() const
{
    return userInfo().cast<NSError>(NSUnderlyingErrorKey);
}

std::string NSError::description() const
{
    auto text = "Error Domain=" + domain() + " Code=" + std::to_string(code());
    if (const auto localized = localizedText(*this))
        text += " " + debugDescribe(*localized);
    if (!userInfo().empty())
        text += " UserInfo=" + userInfo().description();
    return text;
}

std::unique_ptr<Error> NSError::clone() const { return std::make_unique<NSError>(*this); }

NSError NSError::nsError() const { return *this; }

std::optional<NSError> NSError::customNSError() const { return *this; }

bool operator==(const NSError& first, const NSError& second)
{
    return first.isSame(second)
        || (first.code() == second.code() && first.domain() == second.domain()
            && first.userInfo() == second.userInfo());
}

void NSError::setUserInfoValueProvider(std::string_view domain, UserInfoValueProvider provider)
{
    const auto lock = std::lock_guard(registry().mutex);
    // What was there is swapped out and released after the lock: its end may run code that asks for a
    // provider.
    if (const auto place = registry().providers.find(domain); place != registry().providers.end())
        std::swap(place->second, provider);
    else
        registry().providers.emplace(domain, std::move(provider));
}

UserInfoValueProvider NSError::userInfoValueProvider(std::string_view domain)
{
    const auto lock = std::lock_guard(registry().mutex);
    const auto place = registry().providers.find(domain);
    return place != registry().providers.end() ? place->second : UserInfoValueProvider();
}

} // namespace orrenby

std::size_t std::hash<orrenby::NSError>::operator()(const orrenby::NSError& error) const noexcept
{
    return std::hash<std::string>()(error.domain()) ^ (std::hash<std::int64_t>()(error.code()) * 31);
}
