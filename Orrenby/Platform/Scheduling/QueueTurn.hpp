#pragma once

/// @file
/// A caller's place among the work of a queue. Not in the umbrella header: part of DispatchQueue.hpp.

#include "Orrenby/Platform/Export.hpp"
#include <exception>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

class QueueCore;

/// Says of a thread that it runs work of a queue, while it stands.
///
/// What a thread does in the name of a queue may enter other queues in turn; it is then on all of them. Work
/// that merely runs on top of it, because the thread waits, is not: that begins a new chain.
class QueueFrame {
public:
    enum class Chain { Begins, GoesOn };
    enum class Answer { Yes, No, NoFrame };

    /// @param queue  None for work that belongs to something else than a dispatch queue.
    ORRENBY_EXPORT QueueFrame(const QueueCore* queue, Chain chain) noexcept;
    QueueFrame(const QueueFrame&) = delete;
    QueueFrame& operator=(const QueueFrame&) = delete;
    ORRENBY_EXPORT ~QueueFrame();

    /// Whether the calling thread is on `queue`. No frame at all: it is on its own.
    static Answer find(const QueueCore& queue) noexcept;

private:
    const QueueCore* const m_queue;
    const Chain m_chain;
    const QueueFrame* const m_previous;
};

/// The turn of a caller of `sync`: waits for it when it is made, ends it when it is destroyed.
class ORRENBY_EXPORT QueueTurn {
public:
    enum class Kind { Shared, Alone };

    QueueTurn(const std::shared_ptr<QueueCore>& queue, Kind kind);
    QueueTurn(const QueueTurn&) = delete;
    QueueTurn& operator=(const QueueTurn&) = delete;
    ~QueueTurn();

    /// Whether turns of this queue are taken on another thread than the caller's.
    static bool isElsewhere(const QueueCore& queue) noexcept;

    /// Calls `call(context)` there and returns when it has returned.
    static void takeElsewhere(
        const std::shared_ptr<QueueCore>& queue, void (*call)(void*) noexcept, void* context);

private:
    std::shared_ptr<QueueCore> m_queue; ///< Shared, because the work may drop the last handle.
    Kind m_kind;
    bool m_isInside; ///< Nested in a turn of the same concurrent queue, so it does not count.
    std::optional<QueueFrame> m_frame;
};

/// What a call returned or threw, on its way between two threads.
template <class F> class CarriedCall {
    using Result = std::invoke_result_t<F>;
    using Stored = std::conditional_t<std::is_void_v<Result>, char,
        std::conditional_t<std::is_reference_v<Result>, std::remove_reference_t<Result>*, Result>>;

public:
    explicit CarriedCall(F&& work) noexcept
        : m_work(std::forward<F>(work))
    {}

    static void run(void* self) noexcept
    {
        auto& call = *static_cast<CarriedCall*>(self);
        try {
            if constexpr (std::is_void_v<Result>)
                std::forward<F>(call.m_work)();
            else if constexpr (std::is_reference_v<Result>)
                call.m_result = &static_cast<std::remove_reference_t<Result>&>(
                    std::forward<F>(call.m_work)());
            else
                call.m_result.emplace(std::forward<F>(call.m_work)());
        } catch (...) {
            call.m_exception = std::current_exception();
        }
    }

    Result result()
    {
        if (m_exception)
            std::rethrow_exception(std::move(m_exception));
        if constexpr (std::is_reference_v<Result>)
            return static_cast<Result>(**m_result);
        else if constexpr (!std::is_void_v<Result>)
            return std::move(*m_result);
    }

private:
    F&& m_work;
    std::optional<Stored> m_result;
    std::exception_ptr m_exception;
};

template <class F>
std::invoke_result_t<F> runInTurn(const std::shared_ptr<QueueCore>& queue, QueueTurn::Kind kind, F&& work)
{
    if (QueueTurn::isElsewhere(*queue)) {
        auto call = CarriedCall<F>(std::forward<F>(work));
        QueueTurn::takeElsewhere(queue, &CarriedCall<F>::run, &call);
        return call.result();
    }
    const auto turn = QueueTurn(queue, kind);
    return std::forward<F>(work)();
}

} // namespace orrenby::detail
