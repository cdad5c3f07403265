#pragma once

/// @file
/// The proof of a registration with a notification center.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstdint>
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

class NotificationIndex;
struct NotificationKey;

} // namespace detail

/// Stands for one registration of one notification center, which made it; it is nothing but itself.
///
/// Letting go of it does not end the registration. Keeping it keeps neither the callback nor the sender.
///
/// Never changes. Safe to use from several threads.
class NotificationToken {
public:
    NotificationToken(const NotificationToken&) = delete;
    NotificationToken& operator=(const NotificationToken&) = delete;

private:
    friend class detail::NotificationIndex;

    NotificationToken(Ref<const detail::NotificationKey> key, std::uint64_t number) noexcept
        : m_key(std::move(key))
        , m_number(number)
    {}

    const Ref<const detail::NotificationKey> m_key;
    const std::uint64_t m_number; ///< Counted per process, so a token of another center is not mistaken.
};

} // namespace orrenby
