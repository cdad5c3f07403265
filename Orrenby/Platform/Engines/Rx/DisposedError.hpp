#pragma once

/// @file
/// What the Rx engine itself can fail with.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"

namespace orrenby::inline ORRENBY_ABI::StreamsRx {

/// The subject was disposed, so it has no value any more.
///
/// A plain value without content. Not synchronised.
class ORRENBY_EXPORT DisposedError final : public CustomNSError<DisposedError> {
public:
    DisposedError() noexcept;
    ~DisposedError() override;
    std::string description() const override;
    Dictionary errorUserInfo() const;
};

} // namespace orrenby::StreamsRx
