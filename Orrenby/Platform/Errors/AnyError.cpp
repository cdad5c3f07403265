#include "Orrenby/Platform/Errors/AnyError.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <cxxabi.h>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ErrorBox::~ErrorBox() = default;

std::optional<NSError> ErrorBox::customNSError() const
{
    const auto* error = dynamic_cast<const Error*>(m_exception);
    return error ? error->customNSError() : std::nullopt;
}

void ErrorBox::throwPointer() const
{
    throw this; // never matches: nobody looks for a box
}

} // namespace detail

namespace {

class ThrownErrorBox final : public detail::ErrorBox {
public:
    /// @param type  Of what was thrown; null for an exception of another language.
    ThrownErrorBox(std::exception_ptr thrown, const std::type_info* type, const std::exception* exception)
        : ErrorBox(Match::Exception)
        , m_thrown(std::move(thrown))
        , m_type(type)
    {
        if (exception)
            setException(*exception);
    }

    bool isErrorValue() const noexcept override { return true; }

    std::string description() const override
    {
        if (exception())
            return exception()->what();
        try {
            rethrow();
        } catch (const std::string& text) {
            return text;
        } catch (const char* text) {
            return text;
        } catch (...) {
            return printedType();
        }
    }

    std::string debugDescription() const override
    {
        if (const auto* error = dynamic_cast<const Error*>(exception()))
            return error->debugDescription();
        const auto type = printedType();
        const auto text = description();
        return text == type ? type : type + "(" + text + ")";
    }

    NSError nsError() const override
    {
        if (exception())
            return detail::bridgedException(*exception());
        return NSError(printedType(), 1, {{std::string(NSLocalizedDescriptionKey), description()}});
    }

    [[noreturn]] void rethrow() const override { std::rethrow_exception(m_thrown); }

private:
    /// The exception object stays where it is as long as a pointer to the exception lives.
    const void* address(const std::type_info& type) const noexcept override
    {
        return exception() && *m_type == type ? dynamic_cast<const void*>(exception()) : nullptr;
    }

    std::string printedType() const { return m_type ? typeName(*m_type) : "Exception"; }

    std::exception_ptr m_thrown;
    const std::type_info* m_type;
};

} // namespace

AnyError::AnyError(std::exception_ptr thrown)
{
    if (!thrown)
        fatalError("AnyError needs a thrown exception", "Platform/Errors/AnyError", 90);
    try {
        std::rethrow_exception(thrown);
    } catch (const AnyError& other) {
        m_box = other.m_box;
    } catch (const std::exception& known) {
        m_box = std::make_shared<const ThrownErrorBox>(std::move(thrown), &typeid(known), &known);
    } catch (...) {
        const auto* type = abi::__cxa_current_exception_type();
        m_box = std::make_shared<const ThrownErrorBox>(std::move(thrown), type, nullptr);
    }
}

AnyError::~AnyError() = default;

void AnyError::rethrow() const
{
    m_box->rethrow();
    __builtin_unreachable(); // g++ does not believe that of a virtual function
}

std::string AnyError::description() const { return m_box->description(); }

std::string AnyError::debugDescription() const { return m_box->debugDescription(); }

std::unique_ptr<Error> AnyError::clone() const { return std::make_unique<AnyError>(*this); }

NSError AnyError::nsError() const { return m_box->nsError(); }

std::optional<NSError> AnyError::customNSError() const { return m_box->customNSError(); }

bool operator==(const AnyError& first, const AnyError& second)
{
    return first.m_box == second.m_box || first.nsError() == second.nsError();
}

} // namespace orrenby
