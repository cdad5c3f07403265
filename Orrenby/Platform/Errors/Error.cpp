#include "Orrenby/Platform/Errors/Error.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"

namespace orrenby::inline ORRENBY_ABI {

Error::Error(const Error&) noexcept
    : std::exception()
{}

Error& Error::operator=(const Error& other) noexcept
{
    if (this != &other)
        delete m_what.exchange(nullptr, std::memory_order_acq_rel);
    return *this;
}

Error::~Error() { delete m_what.load(std::memory_order_acquire); }

std::string Error::description() const { return typeName(*this); }

std::string Error::debugDescription() const { return fullPrintedForm(typeName(*this)); }

std::string Error::fullPrintedForm(const std::string& typeName) const
{
    const auto text = description();
    return text == typeName ? text : typeName + "(" + text + ")";
}

NSError Error::nsError() const
{
    return NSError(typeName(*this), 1, {{std::string(NSLocalizedDescriptionKey), description()}});
}

std::optional<NSError> Error::customNSError() const { return std::nullopt; }

const char* Error::what() const noexcept
{
    if (const auto* text = m_what.load(std::memory_order_acquire))
        return text->c_str();
    try {
        auto made = std::make_unique<const std::string>(description());
        const std::string* existing = nullptr;
        // Of threads that ask at once, one keeps its text and the others take it over.
        if (m_what.compare_exchange_strong(existing, made.get(), std::memory_order_acq_rel))
            return made.release()->c_str();
        return existing->c_str();
    } catch (...) {
        return "an error that could not be described";
    }
}

} // namespace orrenby
