#pragma once

/// @file
/// An operation's place in a queue. Not in the umbrella header: part of Operation.hpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include <cstddef>
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI {

class Operation;

namespace detail {

class OperationQueueCore;

/// What a queue notes in its operations, so that it needs no list entries of its own.
///
/// Guarded by the queue's lock, but for `queue`, which the operation's own lock guards.
struct OperationPlace {
    enum class Kind : std::uint8_t { Usual, Barrier };
    /// Where the operation stands among those that may begin.
    enum class Line : std::uint8_t { None, InOrder, Late, Begun };

    Ref<OperationQueueCore> queue;
    Ref<Operation> self; ///< Keeps the operation as long as it is in the queue.
    Operation* previous = nullptr;
    Operation* next = nullptr;
    std::uint64_t number = 0;   ///< By the order of adding, from 1. 0: in no queue.
    std::uint64_t barriers = 0; ///< Barriers added to the queue before it.
    std::uint64_t key = 0;      ///< What begins first has the smallest.
    std::size_t position = 0;   ///< In its line.
    Kind kind = Kind::Usual;
    Line line = Line::None;
};

} // namespace detail

} // namespace orrenby
