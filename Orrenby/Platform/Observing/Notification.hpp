#pragma once

/// @file
/// What observers of a notification receive.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/NotificationName.hpp"
#include "Orrenby/Platform/Observing/NotificationSender.hpp"
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// The news that something happened: its name, who tells it, and what there is to know.
///
/// A value that keeps its sender alive. Equal are notifications of one name and sender with equal contents.
/// Not synchronised, but copies may live in several threads.
class Notification {
public:
    /// Without a sender it comes from nobody; observers of a sender do not get it.
    explicit Notification(NotificationName name, NotificationSender sender = {}, Dictionary userInfo = {})
        : m_name(std::move(name))
        , m_sender(std::move(sender))
        , m_userInfo(std::move(userInfo))
    {}

    /// What it was posted under.
    const NotificationName& name() const noexcept { return m_name; }

    /// Who posted it; empty when nobody did.
    const NotificationSender& sender() const noexcept { return m_sender; }

    /// The sender as a `T`, which may be any class that it has; empty when there is none, or it is no `T`.
    template <class T> Ref<T> object() const { return m_sender.object<T>(); }

    /// What the sender added; often empty.
    const Dictionary& userInfo() const noexcept { return m_userInfo; }

    /// The name, then the contents after a blank, if there are any.
    ORRENBY_EXPORT std::string description() const;

    friend bool operator==(const Notification&, const Notification&) = default;

private:
    NotificationName m_name;
    NotificationSender m_sender;
    Dictionary m_userInfo;
};

} // namespace orrenby
