#pragma once

/// @file
/// Operations to try things with, and an observer that writes down what it is told.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Platform/Observing/KeyValueObserver.hpp"
#include "Orrenby/Platform/Scheduling/Operation.hpp"
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

using Entries = std::vector<std::string>;

/// Writes `will KEY` and `did KEY`, into a list that others may write to as well.
class KeyRecorder final : public KeyValueObserver, public std::enable_shared_from_this<KeyRecorder> {
public:
    explicit KeyRecorder(std::shared_ptr<Entries> entries = std::make_shared<Entries>())
        : m_entries(std::move(entries))
    {}

    /// A recorder that was told nothing yet.
    static Ref<KeyRecorder> of(Operation& operation, const std::vector<std::string>& keys)
    {
        auto recorder = std::make_shared<KeyRecorder>();
        recorder->observe(operation, keys);
        return recorder;
    }

    void observeValue(const std::string& keyPath, ObservableObject&, const KeyValueChange& change) override
    {
        m_entries->push_back((change.isPrior ? "will " : "did ") + keyPath);
    }

    void observe(Operation& operation, const std::vector<std::string>& keys)
    {
        for (const auto& key : keys)
            operation.addObserver(shared_from_this(), key, {.prior = true});
    }

    const Entries& entries() const { return *m_entries; }
    void clear() { m_entries->clear(); }

private:
    std::shared_ptr<Entries> m_entries;
};

/// Writes its name when it runs.
class NamedOperation : public Operation {
public:
    NamedOperation(std::shared_ptr<Entries> entries, std::string name)
        : m_entries(std::move(entries))
        , m_entry(std::move(name))
    {}

    void main() override { m_entries->push_back(m_entry); }

private:
    std::shared_ptr<Entries> m_entries;
    std::string m_entry;
};

/// Begins when it is started and ends when it is told to. Keeps its states by itself.
class ManualOperation : public Operation {
public:
    void start() override
    {
        ++startCount;
        if (isCancelled())
            end();
        else
            change("isExecuting", [this] { m_isExecuting = true; });
    }

    void end()
    {
        willChangeValue("isFinished");
        if (m_isExecuting)
            change("isExecuting", [this] { m_isExecuting = false; });
        m_isFinished = true;
        didChangeValue("isFinished");
    }

    bool isExecuting() const override { return m_isExecuting; }
    bool isFinished() const override { return m_isFinished; }
    bool isAsynchronous() const override { return true; }

    std::atomic<int> startCount = 0;

private:
    template <class Change> void change(std::string_view key, Change&& make)
    {
        willChangeValue(key);
        make();
        didChangeValue(key);
    }

    std::atomic<bool> m_isExecuting = false;
    std::atomic<bool> m_isFinished = false;
};

/// Decides by itself when it is ready.
class ReadyWhenTold : public Operation {
public:
    bool isReady() const override { return m_isAllowed && Operation::isReady(); }

    void allow(bool isAllowed = true)
    {
        willChangeValue("isReady");
        m_isAllowed = isAllowed;
        didChangeValue("isReady");
    }

private:
    std::atomic<bool> m_isAllowed = false;
};

} // namespace orrenby::testing
