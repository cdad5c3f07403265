#pragma once

/// @file
/// What went wrong with a store.

#include "Orrenby/Platform/Store/StoreError.hpp"
#include <optional>

namespace orrenby::tests {

/// The kind of store error that `work` throws; nothing when it throws none.
template <class Work> std::optional<StoreError::Kind> failureOf(Work&& work)
{
    try {
        work();
        return std::nullopt;
    } catch (const StoreError& error) {
        return error.kind();
    }
}

} // namespace orrenby::tests
