#pragma once

/// @file
/// A handle that is nothing but itself.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/ObjectIdentifier.hpp"
#include <cstddef>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// Lets its holder recognise a registration, a request, a turn: equal to itself and to nothing else.
///
/// It carries no data and frees nothing when it ends. A token that is shared is made with
/// `std::make_shared<Token>()`; references to it compare and hash as the token does.
///
/// @snippet Tests/Utilities/TokenTests.cpp Recognising a registration
///
/// Not copyable: a copy would be another token. It never changes. Safe to use from several threads.
class Token {
public:
    Token() = default;
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;

    /// The identity of this object, the same for its whole life. A token made after its end may get the same
    /// one: keep the token, not the identifier.
    ObjectIdentifier identifier() const noexcept { return ObjectIdentifier(this); }

    std::size_t hash() const noexcept { return identifier().hash(); }

    /// `ObjectIdentifier(0x` with the address in 16 hexadecimal digits and `)`.
    std::string debugDescription() const { return identifier().debugDescription(); }

    friend bool operator==(const Token& first, const Token& second) noexcept
    {
        return first.identifier() == second.identifier();
    }
};

} // namespace orrenby

template <> struct std::hash<orrenby::Token> {
    std::size_t operator()(const orrenby::Token& token) const noexcept { return token.hash(); }
};
