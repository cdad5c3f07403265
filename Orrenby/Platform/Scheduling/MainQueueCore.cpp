#include "Orrenby/Platform/Scheduling/RunLoop.hpp"
#include "Orrenby/Platform/Scheduling/SerialQueueCore.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

class MainQueueCore final : public SerialQueueCore {
public:
    MainQueueCore()
        : SerialQueueCore(DispatchQueue::Kind::Main, "main")
    {}

    /// Also outside of any work: whatever the main thread does is done on the main queue. But in a test's
    /// world it also runs the work of others, in their name.
    bool isCurrent() const noexcept override
    {
        const auto answer = QueueFrame::find(*this);
        return answer != QueueFrame::Answer::NoFrame ? answer == QueueFrame::Answer::Yes
                                                     : Thread::isMainThread();
    }

private:
    void schedule(Job& job) override { RunLoop::main().execute(job); }
};

} // namespace

const std::shared_ptr<QueueCore>& mainQueueCore()
{
    static const auto& core = *new std::shared_ptr<QueueCore>(std::make_shared<MainQueueCore>());
    return core;
}

} // namespace orrenby::detail
