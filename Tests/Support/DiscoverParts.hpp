#pragma once

/// @file
/// Flows, contexts and workers that write down what happens to them.

#include "Orrenby/Utilities/Discover.hpp"
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::testing {

/// What happened, in order.
using Diary = std::vector<std::string>;

/// Writes into the diary when it is destroyed: a part that shows when it is let go.
class DiaryPart {
public:
    DiaryPart(Diary& diary, std::string text)
        : m_diary(&diary)
        , m_text(std::move(text))
    {}
    DiaryPart(const DiaryPart&) = delete;
    DiaryPart& operator=(const DiaryPart&) = delete;
    ~DiaryPart() { m_diary->push_back(m_text); }

private:
    Diary* m_diary;
    std::string m_text;
};

class DiaryWorker : public AbstractWorker {
public:
    explicit DiaryWorker(Diary& diary, std::string name = "worker")
        : m_diary(&diary)
        , m_name(std::move(name))
    {}

    const std::string& name() const { return m_name; }

protected:
    void didStart() override { m_diary->push_back(m_name + " started"); }
    void willStop() override { m_diary->push_back(m_name + " stops"); }

private:
    Diary* m_diary;
    std::string m_name;
};

/// A worker of another class, to be told from the first.
class SpecialWorker : public DiaryWorker {
public:
    using DiaryWorker::DiaryWorker;
};

/// Analytics that keep out of the diary.
class SilentAnalytics : public AbstractWorker {};

class DiaryContext : public AbstractContext<SilentAnalytics> {
public:
    explicit DiaryContext(Diary& diary, std::string name = "context", Workers workers = {})
        : AbstractContext(std::move(workers), make<SilentAnalytics>())
        , m_diary(&diary)
        , m_name(std::move(name))
    {}

protected:
    void didBecomeActive() override { m_diary->push_back(m_name + " became active"); }
    void willResignActive() override { m_diary->push_back(m_name + " resigns"); }

private:
    Diary* m_diary;
    std::string m_name;
};

class DiaryFlow : public AbstractFlow<DiaryContext, std::string> {
public:
    explicit DiaryFlow(Diary& diary, std::string name = "flow", Workers workers = {})
        : AbstractFlow(make<DiaryContext>(diary, name + " context", std::move(workers)), name + " view")
        , m_diary(&diary)
        , m_name(std::move(name))
    {}

    const std::string& name() const { return m_name; }

protected:
    void didStart() override { m_diary->push_back(m_name + " started"); }

private:
    Diary* m_diary;
    std::string m_name;
};

/// A flow of another class, to be told from the first.
class SpecialFlow : public DiaryFlow {
public:
    using DiaryFlow::DiaryFlow;
};

/// A flow that shares no class with the others and does what it is told to.
class ForeignFlow : public Flow {
public:
    explicit ForeignFlow(Ref<Context> context)
        : m_context(std::move(context))
    {}
    Ref<Context> _context() const override { return m_context; }
    void start() override
    {
        m_context->activate();
        onStart();
    }
    void end() override
    {
        onEnd();
        m_context->deactivate();
    }
    std::function<void()> onStart = [] {};
    std::function<void()> onEnd = [] {};

private:
    Ref<Context> m_context;
};

inline Ref<ForeignFlow> foreignFlow(Diary& diary)
{
    return std::make_shared<ForeignFlow>(make<DiaryContext>(diary));
}

/// What a flow may also be.
class Named {
public:
    virtual ~Named() = default;
    virtual std::string title() const = 0;
};

class NamedFlow : public Named, public DiaryFlow {
public:
    using DiaryFlow::DiaryFlow;
    std::string title() const override { return "named " + name(); }
};

} // namespace orrenby::testing
