// Step 8: work that takes a while, waits its turn, and tries again more slowly each time.

#include "Orrenby/Platform/Scheduling/BlockOperation.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Utilities/AsyncBaseOperation.hpp"
#include "Orrenby/Utilities/Retry.hpp"
#include <cstdio>

using namespace orrenby;

// Sends something to a service that is busy the first few times.
class Upload : public AsyncBaseOperation {
public:
    explicit Upload(int refusals)
        : m_refusals(refusals)
    {}

    // Begins and returns. The operation is finished when the completion is called, from wherever that is.
    void execute(Completion completion) override { attempt(completion); }

    bool isDone() const { return m_isDone; }

private:
    void attempt(const Completion& completion)
    {
        if (m_refusals-- == 0) {
            std::puts("upload: done");
            m_isDone = true;
            return completion();
        }
        const auto delay = m_retry.nextInterval();
        if (!delay || isCancelled())
            return completion();
        std::printf("upload: refused, again in %g ms\n", *delay * 1000);
        // The queue keeps the operation until it has finished, so the plain pointer is safe.
        m_network.asyncAfter(*delay, [this, completion] { attempt(completion); });
    }

    int m_refusals;
    bool m_isDone = false;
    Retry m_retry = Retry(0.001, 5, Retry::Exponential{2}); // seconds, attempts
    DispatchQueue m_network = DispatchQueue::serial("com.example.network");
};

int main()
{
    const auto upload = make<Upload>(3);
    const auto report = make<BlockOperation>(
        [&] { std::puts(upload->isDone() ? "report: uploaded" : "report: given up"); });
    report->addDependency(upload); // whatever the order of adding

    const auto queue = OperationQueue();
    queue.addOperations({report, upload});
    queue.waitUntilAllOperationsAreFinished();
    return upload->isDone() && report->isFinished() ? 0 : 1;
}
