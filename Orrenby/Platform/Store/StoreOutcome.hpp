#pragma once

/// @file
/// How operations of the store give their failures instead of throwing them. Not in the umbrella header: a
/// part of those operations.

#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What the work gives, or the `StoreError` that it throws. What else it throws passes.
template <class Work> auto storeOutcome(Work&& work)
{
    using Value = std::invoke_result_t<Work&>;
    using Outcome = Result<std::conditional_t<std::is_void_v<Value>, Void, Value>, StoreError>;
    try {
        if constexpr (std::is_void_v<Value>) {
            work();
            return Outcome::success();
        } else
            return Outcome::success(work());
    } catch (const StoreError& error) {
        return Outcome::failure(error);
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
