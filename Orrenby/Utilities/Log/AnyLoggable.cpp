#include "Orrenby/Utilities/Log/AnyLoggable.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

namespace {

class ReadBox final : public LoggedBox {
public:
    explicit ReadBox(LoggedValue read)
        : m_read(std::move(read))
    {}

    void read(LoggedValue& read) const override
    {
        read.kind = m_read.kind;
        read.isStaticText = m_read.isStaticText;
        if (read.wantsMessage)
            read.message = m_read.message;
        if (read.wantsError)
            read.error = m_read.error;
    }

private:
    LoggedValue m_read;
};

} // namespace

LoggedBox::~LoggedBox() = default;

std::shared_ptr<const LoggedBox> boxOfRead(LoggedValue read)
{
    return std::make_shared<const ReadBox>(std::move(read));
}

} // namespace detail

AnyLoggable::~AnyLoggable() = default;

AnyLoggable::Element AnyLoggable::element() const
{
    auto read = detail::LoggedValue{};
    m_box->read(read);
    switch (read.kind) {
    case detail::LoggedKind::Loggable:
        return Element::loggable;
    case detail::LoggedKind::CustomError:
        return Element::customError;
    case detail::LoggedKind::Error:
        return Element::error;
    case detail::LoggedKind::Unknown:
        break;
    }
    return Element::unknown;
}

std::string AnyLoggable::message() const
{
    auto read = detail::LoggedValue{.wantsMessage = true};
    m_box->read(read);
    return std::move(read.message);
}

std::optional<NSError> AnyLoggable::error() const
{
    auto read = detail::LoggedValue{.wantsError = true};
    m_box->read(read);
    return std::move(read.error);
}

} // namespace orrenby
