#pragma once

/// @file
/// Where new identifiers come from.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI {

/// Makes identifiers, each of them once.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT UUIDSource {
public:
    UUIDSource(const UUIDSource&) = delete;
    UUIDSource& operator=(const UUIDSource&) = delete;
    virtual ~UUIDSource();

    /// One that it has not given before, as far as it can tell. Called from any thread.
    virtual UUID next() = 0;

    /// Identifiers of version 4, whose other 122 bits are the kernel's random ones.
    static std::shared_ptr<UUIDSource> system();

protected:
    UUIDSource() = default;
};

} // namespace orrenby
