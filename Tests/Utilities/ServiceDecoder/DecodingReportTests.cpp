#include "Orrenby/Utilities/ServiceDecoder/DecodingReport.hpp"

#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include <gmock/gmock.h>
#include <stdexcept>

using namespace orrenby;

namespace {

DecodingFailure failure(std::vector<CodingKey> path, TextPosition position, AnyError error)
{
    return {std::move(path), position, "near here", std::move(error)};
}

} // namespace

TEST(DecodingReport, HasALineForEachFailure)
{
    const DecodingReport report = {
        {failure({"user", CodingKey::place(2)}, {30, 3, 7}, DecodingError::dataCorrupted({{}, "Too old"})),
            failure({}, {}, std::runtime_error("refused"))}};

    EXPECT_FALSE(report.isEmpty());
    EXPECT_EQ(report.description(),
        "user > Index 2, line 3, column 7: Too old: near here\n"
        "the root, line 1, column 1: refused: near here");
}

TEST(DecodingReport, IsEmptyAtFirst)
{
    EXPECT_TRUE(DecodingReport().isEmpty());
    EXPECT_EQ(DecodingReport().description(), "");
}

TEST(DecodingReport, ComparesFailuresWhole)
{
    const auto one = failure({"a"}, {1, 1, 2}, std::runtime_error("x"));

    EXPECT_EQ(one, failure({"a"}, {1, 1, 2}, std::runtime_error("x")));
    EXPECT_FALSE(one == failure({"b"}, {1, 1, 2}, std::runtime_error("x")));
    EXPECT_FALSE(one == failure({"a"}, {2, 1, 3}, std::runtime_error("x")));
    EXPECT_FALSE(one == failure({"a"}, {1, 1, 2}, std::runtime_error("y")));
}
