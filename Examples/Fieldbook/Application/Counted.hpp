#pragma once

/// @file
/// Counting the objects of the tree, so that the end can show that none is left.

namespace fieldbook {

enum class Part { flow, context, worker };

/// A base class that counts how many objects of one kind exist.
template <Part part> class Counted {
public:
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    static int liveCount() { return s_count; }

protected:
    Counted() { ++s_count; }
    ~Counted() { --s_count; }

private:
    static inline int s_count = 0;
};

} // namespace fieldbook
