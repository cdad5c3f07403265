#include "Orrenby/Platform/World/Bundle.hpp"

#include "Orrenby/Platform/World/World.hpp"
#include <mutex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

struct Bundle::Contents {
    std::mutex mutex;
    std::optional<std::string> identifier;
};

Bundle::Bundle(std::optional<std::string> identifier)
    : m_contents(std::make_shared<Contents>())
{
    m_contents->identifier = std::move(identifier);
}

Bundle Bundle::main() { return World::current().mainBundle(); }

std::optional<std::string> Bundle::identifier() const
{
    const auto lock = std::lock_guard(m_contents->mutex);
    return m_contents->identifier;
}

void Bundle::setIdentifier(std::optional<std::string> identifier)
{
    const auto lock = std::lock_guard(m_contents->mutex);
    m_contents->identifier.swap(identifier);
}

} // namespace orrenby
