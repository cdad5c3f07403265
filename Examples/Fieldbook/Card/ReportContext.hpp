#pragma once

/// @file
/// The context of one opened report.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Utilities/Discover/AbstractContext.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"

namespace fieldbook {

/// Counts how often reports are opened.
class OpeningWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit OpeningWorker(Session& session);
    ~OpeningWorker() override;

protected:
    void didStart() override;

private:
    Session& m_session;
};

/// Active while its report is on the screen.
class ReportContext : public orrenby::AbstractContext<OpeningWorker>, Counted<Part::context> {
public:
    /// @param session  Outlives the context.
    explicit ReportContext(Session& session);
    ~ReportContext() override;
};

} // namespace fieldbook
