#pragma once

/// @file
/// What the application says about itself.

#include "Orrenby/Platform/Export.hpp"
#include <memory>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A packaged unit of code, known by its identifier.
///
/// @snippet Tests/Platform/World/BundleTests.cpp Naming the application
///
/// A handle: copies are the same bundle. Safe to use from several threads.
class ORRENBY_EXPORT Bundle {
public:
    /// A bundle of its own, such as one for a library's texts.
    explicit Bundle(std::optional<std::string> identifier = std::nullopt);

    /// The application, in the current world.
    static Bundle main();

    /// For instance `com.example.app`. There is none until it is set; an empty one counts as present.
    std::optional<std::string> identifier() const;

    /// The application sets the main one at start-up, before errors are made: their domains begin with it.
    void setIdentifier(std::optional<std::string> identifier);

    /// Whether both are the same bundle.
    friend bool operator==(const Bundle&, const Bundle&) noexcept = default;

private:
    struct Contents;
    std::shared_ptr<Contents> m_contents;
};

} // namespace orrenby
