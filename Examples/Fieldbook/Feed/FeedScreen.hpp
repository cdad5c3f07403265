#pragma once

/// @file
/// What the feed's context can have shown.

#include "Feed/FeedNews.hpp"

namespace fieldbook {

/// Shows a feed. The context knows this interface alone, so that a test can look at what it shows.
class FeedScreen {
public:
    virtual ~FeedScreen() = default;

    virtual void show(const FeedNews& news) = 0;
    virtual void show(const FolderLost& failure) = 0;
};

} // namespace fieldbook
