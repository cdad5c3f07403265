#pragma once

/// @file
/// Hearing what a worker tells the feed.

#include "Examples/Fieldbook/Feed/FeedNews.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include <vector>

namespace fieldbook {

/// Adds each element to `told` as long as the result is held. That the folder was lost is left out.
///
/// @param told  Outlives the result.
[[nodiscard]] inline orrenby::Streams::AnyCancellable hear(
    const orrenby::Streams::AnyPublisher<FeedNews, FolderLost>& news, std::vector<FeedNews>& told)
{
    return news.sink([&told](const auto& payload) {
        if (const auto* const element = payload.asValue())
            told.push_back(*element);
    });
}

} // namespace fieldbook
