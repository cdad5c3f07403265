#include "Orrenby/Utilities/AsyncBaseOperation.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr auto source = "Utilities/AsyncBaseOperation";

using State = AsyncBaseOperation::State;
using Keys = std::span<const std::string_view>;

/// What a step changes; nothing for a step that does not exist.
Keys keysOfStep(State from, State to)
{
    static constexpr std::string_view both[] = {"isExecuting", "isFinished"};
    const auto keys = Keys(both);
    if (from == State::ready && to == State::executing)
        return keys.first(1);
    if (from == State::ready && to == State::finished)
        return keys.last(1);
    if (from == State::executing && to == State::finished)
        return keys;
    return {};
}

} // namespace

AsyncBaseOperation::Completion::Completion(WeakRef<Operation> operation) noexcept
    : m_operation(std::move(operation))
{}

void AsyncBaseOperation::Completion::operator()() const
{
    if (const auto operation = m_operation.lock())
        static_cast<AsyncBaseOperation&>(*operation).setState(State::finished);
}

AsyncBaseOperation::AsyncBaseOperation()
    : m_state(State::ready, SynchronizedKind::readersWriter)
{}

AsyncBaseOperation::~AsyncBaseOperation() = default;

bool AsyncBaseOperation::isExecuting() const { return m_state.value() == State::executing; }
bool AsyncBaseOperation::isFinished() const { return m_state.value() == State::finished; }
bool AsyncBaseOperation::isAsynchronous() const { return true; }

void AsyncBaseOperation::start()
{
    if (isCancelled()) {
        setState(State::finished);
        return;
    }
    auto self = weak_from_this();
    if (self.expired())
        fatalError("start() of an asynchronous operation that no reference holds", source);
    setState(State::executing);
    execute(Completion(std::move(self)));
}

void AsyncBaseOperation::execute(Completion)
{
    fatalError("Method in abstract base class must be overridden", source, 58);
}

void AsyncBaseOperation::finish() { setState(State::finished); }

void AsyncBaseOperation::setState(State state)
{
    const auto keys = keysOfStep(m_state.value(), state);
    if (keys.empty())
        return;
    const auto self = weak_from_this().lock(); // the queue may let go of it when it hears of the end
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        willChangeValue(*key);
    m_state.apply([state](State& stored) { stored = state; });
    for (const auto key : keys)
        didChangeValue(key);
}

} // namespace orrenby
