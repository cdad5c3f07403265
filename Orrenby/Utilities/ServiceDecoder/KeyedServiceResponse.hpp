#pragma once

/// @file
/// A response while it is decoded.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

/// What `ServiceDecoder::decode` decodes: nothing is left of it but the calls it made.
///
/// Only the service decoder decodes it: without the registrations in the decoder's `userInfo` the process
/// ends.
///
/// Not synchronised.
struct ORRENBY_EXPORT KeyedServiceResponse {
    /// Calls what was registered for each member of the response.
    static KeyedServiceResponse init(const Decoder& decoder);
};

} // namespace orrenby
