#pragma once

/// @file
/// The flow of the settings.

#include "Application/Counted.hpp"
#include "Application/ScreenContext.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Utilities/Discover/AbstractFlow.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"

namespace fieldbook {

/// Shows the settings when it starts, and each one that changes while it is there.
class SettingsFlow : public orrenby::AbstractFlow<ScreenContext, orrenby::Void>, Counted<Part::flow> {
public:
    /// @param session  Outlives the flow.
    explicit SettingsFlow(Session& session);
    ~SettingsFlow() override;

protected:
    void didStart() override;

private:
    void show(std::string_view name, std::string_view value);

    Session& m_session;
    orrenby::Ref<orrenby::KeyPathObserver<Settings>> m_changes;
};

} // namespace fieldbook
