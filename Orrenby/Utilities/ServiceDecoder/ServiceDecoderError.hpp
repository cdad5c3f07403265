#pragma once

/// @file
/// Why a service could not be registered.

#include "Orrenby/Platform/Errors/Error.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A service that could not be registered: `ServiceDecoder::Error`.
///
/// As a platform error object it has the domain `ServiceDecoder.Error`, the number of the kind as its code,
/// which is 0, and no user information.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT ServiceDecoderError final : public Error {
public:
    static constexpr std::string_view printedTypeName = "ServiceDecoder.Error";

    /// What was wrong: there is one case.
    enum class Kind : std::uint8_t {
        duplicateKey ///< The key has been registered before.
    };

    /// A key that was registered twice.
    static ServiceDecoderError duplicateKey(ServiceKey key);

    /// Always `duplicateKey`.
    Kind kind() const noexcept { return Kind::duplicateKey; }
    /// The key that was registered twice.
    const ServiceKey& key() const noexcept { return m_key; }

    /// `duplicateKey(user)`
    std::string description() const override;
    std::string debugDescription() const override;
    std::unique_ptr<Error> clone() const override;
    NSError nsError() const override;

    friend bool operator==(const ServiceDecoderError& first, const ServiceDecoderError& second) noexcept
    {
        return first.m_key == second.m_key;
    }

private:
    explicit ServiceDecoderError(ServiceKey key);

    ServiceKey m_key;
};

} // namespace orrenby
