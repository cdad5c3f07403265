#pragma once

/// @file
/// The base class of contexts that hold what their flow shows.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Utilities/Discover/AbstractContext.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A context with a presentable: the value that its flow shows. Of any type; it is kept, not interpreted.
///
/// @snippet Tests/Utilities/Discover/AbstractPresentableContextTests.cpp Presenting a value
///
/// In everything else an `AbstractContext`. The presentable outlives the end of the context: hooks and
/// destructors of a subclass still find it.
///
/// Not synchronised. Use from the main thread.
template <class Analytics, class Presentable>
class AbstractPresentableContext : public AbstractContext<Analytics> {
public:
    /// Keeps the presentable as it is.
    AbstractPresentableContext(Presentable presentable, Workers workers, Ref<Analytics> analytics)
        : AbstractContext<Analytics>(std::move(workers), std::move(analytics))
        , m_presentable(std::move(presentable))
    {}

    /// Ends the process: without a presentable there is no such context.
    AbstractPresentableContext(Workers workers, Ref<Analytics> analytics)
        : AbstractPresentableContext(unimplementedInitializer(), std::move(workers), std::move(analytics))
    {}

    /// What it was made with. Good as long as the context is.
    const Presentable& presentable() const { return m_presentable; }

private:
    [[noreturn]] static Presentable unimplementedInitializer()
    {
        fatalError("Use of unimplemented initializer 'init(workers:analytics:)' for class "
                   "'Orrenby.AbstractPresentableContext'",
            "Utilities/Discover");
    }

    Presentable m_presentable;
};

} // namespace orrenby
