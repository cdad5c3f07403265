#include "Orrenby/Platform/Net/BodyStream.hpp"

#include "Orrenby/Platform/Objects/Printing.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace orrenby;
using orrenby::tests::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Kind = BodyStreamError::Kind;
using ByteCount = Result<std::size_t, BodyStreamError>;

/// What is left of the body, read in pieces of this size.
std::string rest(BodyStream& body, std::size_t pieceSize = 5)
{
    std::string text;
    std::vector<char> buffer(pieceSize);
    while (const auto count = body.read(std::as_writable_bytes(std::span(buffer))))
        text.append(buffer.data(), count);
    return text;
}

BodyStreamError errorOf(BodyStream& body)
{
    std::vector<std::byte> buffer(1000);
    return body.tryRead(buffer).error().value_or(BodyStreamError(Kind::Changed, "no error"));
}

/// An earlier moment of writing than any that the system's clock gives now.
void backdate(const std::string& path)
{
    const struct timespec times[2] = {{1000, 0}, {1000, 0}};
    ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

std::string randomText(std::mt19937& random, std::size_t size)
{
    std::string text(size, '\0');
    std::generate(text.begin(), text.end(), [&] { return static_cast<char>(random()); });
    return text;
}

long peakMemoryInKilobytes()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST(BodyStream, IsReadPieceByPiece)
{
    const TemporaryFolder folder;
    const auto path = folder.file("notes.txt", "a windy morning");
    //! [Reading a body piece by piece]
    BodyStream body;
    body.append("[");
    body.appendFile(path);
    body.append("]");

    std::string sent;
    std::array<std::byte, 7> buffer;
    while (const auto count = body.read(buffer)) {
        sent.append(reinterpret_cast<const char*>(buffer.data()), count);
        sent += "|"; // a transport would send it and forget it
    }

    EXPECT_EQ(body.length(), 17U);
    EXPECT_EQ(sent, "[a wind|y morni|ng]|");
    //! [Reading a body piece by piece]
}

TEST(BodyStream, IsEmptyAtFirst)
{
    BodyStream body;

    EXPECT_EQ(body.length(), 0U);
    EXPECT_TRUE(body.isAtEnd());
    EXPECT_EQ(rest(body), "");
}

TEST(BodyStream, IsEmptyOfEmptyPieces)
{
    const TemporaryFolder folder;
    BodyStream body;
    body.append("");
    body.append(Data());
    body.append(BodyStream());
    body.appendFile(folder.file("empty", ""));

    EXPECT_EQ(body.length(), 0U);
    EXPECT_EQ(rest(body), "");
}

TEST(BodyStream, GivesTheSameBytesInPiecesOfEverySize)
{
    const TemporaryFolder folder;
    for (unsigned seed = 1; seed <= 50; ++seed) {
        std::mt19937 random(seed);
        std::string expected;
        BodyStream body;
        for (auto piece = random() % 8; piece > 0; --piece) {
            const auto text = randomText(random, random() % 4 == 0 ? 0 : random() % 300);
            expected += text;
            if (random() % 2 == 0)
                body.append(text);
            else
                body.appendFile(folder.file(std::to_string(seed) + "-" + std::to_string(piece), text));
        }
        ASSERT_EQ(body.length(), expected.size()) << seed;

        std::string text;
        std::vector<char> buffer(500);
        while (!body.isAtEnd()) {
            const auto wanted = random() % buffer.size();
            const auto count = body.read(std::as_writable_bytes(std::span(buffer).first(wanted)));
            ASSERT_EQ(count, std::min(wanted, expected.size() - text.size())) << seed;
            text.append(buffer.data(), count);
        }
        EXPECT_EQ(text, expected) << seed;
    }
}

TEST(BodyStream, GoesOnFromEveryOffset)
{
    const TemporaryFolder folder;
    BodyStream body;
    body.append("ab");
    body.appendFile(folder.file("cde", "cde"));
    body.appendFile(folder.file("f", "f"));
    body.append("gh");
    for (const std::size_t offset : {8U, 0U, 3U, 5U, 1U, 7U, 2U, 6U, 4U}) {
        ASSERT_TRUE(body.restart(offset));

        EXPECT_EQ(body.offset(), offset);
        EXPECT_EQ(rest(body, 2), std::string("abcdefgh").substr(offset));
        EXPECT_TRUE(body.isAtEnd());
    }
}

TEST(BodyStream, RefusesOffsetsBeyondItsEnd)
{
    BodyStream body;
    body.append("abc");
    ASSERT_TRUE(body.restart(1));

    EXPECT_FALSE(body.restart(4));
    EXPECT_FALSE(body.restart(~std::uint64_t(0)));
    EXPECT_EQ(body.offset(), 1U);
}

TEST(BodyStream, BeginsAgain)
{
    BodyStream body;
    body.append("abc");

    EXPECT_EQ(rest(body), "abc");
    body.restart();
    EXPECT_EQ(rest(body), "abc");
}

TEST(BodyStream, ReadsNothingIntoNoBuffer)
{
    BodyStream body;
    body.append("abc");

    EXPECT_EQ(body.read({}), 0U);
    EXPECT_EQ(body.offset(), 0U);
}

TEST(BodyStream, GrowsWhileItIsRead)
{
    BodyStream body;
    body.append("ab");

    EXPECT_EQ(rest(body), "ab");
    body.append("cd");
    EXPECT_EQ(rest(body), "cd");
}

TEST(BodyStream, TakesInAnotherWhereverThatWas)
{
    const TemporaryFolder folder;
    BodyStream inner;
    inner.append("b");
    inner.appendFile(folder.file("c", "c"));
    ASSERT_EQ(rest(inner), "bc");
    BodyStream body;
    body.append("a");

    body.append(std::move(inner));
    body.append("d");

    EXPECT_EQ(rest(body), "abcd");
}

TEST(BodyStream, TellsItsProgress)
{
    BodyStream body;
    body.append("abcdefgh");
    std::vector<std::string> steps;
    body.setProgressHandler([&](std::uint64_t offset, std::uint64_t length) {
        steps.push_back(std::to_string(offset) + "/" + std::to_string(length));
    });

    rest(body, 3);

    EXPECT_THAT(steps, ElementsAre("3/8", "6/8", "8/8")); // the read that gives nothing is no step
    EXPECT_EQ(body.description(), "8 of 8 bytes");
}

TEST(BodyStream, TellsNoMoreWithoutAHandler)
{
    BodyStream body;
    body.append("ab");
    int calls = 0;
    body.setProgressHandler([&](std::uint64_t, std::uint64_t) { ++calls; });
    body.setProgressHandler(nullptr);

    rest(body);

    EXPECT_EQ(calls, 0);
}

TEST(BodyStream, MayBeRestartedByItsHandler)
{
    BodyStream body;
    body.append("abcdef");
    bool isFirst = true;
    body.setProgressHandler([&](std::uint64_t, std::uint64_t) {
        if (std::exchange(isFirst, false))
            body.restart();
    });

    EXPECT_EQ(rest(body, 4), "abcdabcdef");
}

TEST(BodyStream, IsEmptyOnceItWasMovedFrom)
{
    const TemporaryFolder folder;
    BodyStream body;
    body.appendFile(folder.file("a", "abcdef"));
    std::array<std::byte, 2> buffer;
    body.read(buffer);

    BodyStream moved = std::move(body);
    BodyStream assigned;
    assigned.append("x");
    assigned = std::move(moved);

    EXPECT_EQ(body.length(), 0U); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(rest(moved), "");   // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(rest(assigned), "cdef");
}

TEST(BodyStream, RefusesAFileThatIsMissing)
{
    const TemporaryFolder folder;
    BodyStream body;
    body.append("a");
    const auto path = folder.file("missing");

    const auto error = body.tryAppendFile(path).error();

    EXPECT_EQ(error, BodyStreamError(Kind::CannotOpen, path, ENOENT));
    EXPECT_EQ(error->description(), "The file \"" + path + "\" cannot be opened: No such file or directory");
    EXPECT_THROW(body.appendFile(path), BodyStreamError);
    EXPECT_EQ(rest(body), "a");
}

TEST(BodyStream, RefusesAFolderAndAPipe)
{
    const TemporaryFolder folder;
    BodyStream body;
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);

    EXPECT_EQ(
        body.tryAppendFile(folder.file("")).error(), BodyStreamError(Kind::NoRegularFile, folder.file("")));
    EXPECT_EQ(body.tryAppendFile(folder.file("pipe")).error(),
        BodyStreamError(Kind::NoRegularFile, folder.file("pipe")));
    EXPECT_EQ(body.length(), 0U);
}

TEST(BodyStream, RefusesPathsThatNameNoFile)
{
    const TemporaryFolder folder;
    BodyStream body;
    const auto cut = folder.file("a", "x") + std::string(1, '\0') + "b";

    EXPECT_EQ(body.tryAppendFile("").error(), BodyStreamError(Kind::CannotOpen, "", ENOENT));
    EXPECT_EQ(body.tryAppendFile(cut).error(), BodyStreamError(Kind::CannotOpen, cut, ENOENT));
}

TEST(BodyStream, SaysWhenAFileVanished)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abc");
    BodyStream body;
    body.append("x");
    body.appendFile(path);

    std::filesystem::remove(path);

    EXPECT_EQ(errorOf(body), BodyStreamError(Kind::CannotOpen, path, ENOENT));
    EXPECT_EQ(body.offset(), 0U); // also of what stands before the file
}

TEST(BodyStream, SaysWhenAFileShrank)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abcdef");
    BodyStream body;
    body.appendFile(path);

    std::filesystem::resize_file(path, 5);

    EXPECT_EQ(errorOf(body), BodyStreamError(Kind::Shrunk, path));
    EXPECT_EQ(errorOf(body).description(), "The file \"" + path + "\" is shorter than it was");
}

TEST(BodyStream, SaysWhenAFileShrankWhileItWasRead)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abcdef");
    BodyStream body;
    body.appendFile(path);
    std::array<std::byte, 2> buffer;
    ASSERT_EQ(body.read(buffer), 2U);

    std::filesystem::resize_file(path, 3);

    EXPECT_EQ(errorOf(body), BodyStreamError(Kind::Shrunk, path));
    EXPECT_EQ(body.offset(), 2U);
}

TEST(BodyStream, SaysWhenAFileGrew)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abc");
    BodyStream body;
    body.appendFile(path);

    folder.file("a", "abcd");

    EXPECT_EQ(errorOf(body), BodyStreamError(Kind::Changed, path));
}

TEST(BodyStream, SaysWhenAFileWasWrittenAgain)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abc");
    backdate(path);
    BodyStream body;
    body.appendFile(path);
    std::array<std::byte, 1> buffer;
    ASSERT_EQ(body.read(buffer), 1U);

    folder.file("a", "xyz");

    EXPECT_EQ(errorOf(body), BodyStreamError(Kind::Changed, path));
}

TEST(BodyStream, SaysWhenAFileWasReplaced)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abc");
    const auto other = folder.file("b", "xyz");
    backdate(path);
    backdate(other);
    BodyStream body;
    body.appendFile(path);

    std::filesystem::rename(other, path);

    EXPECT_EQ(errorOf(body), BodyStreamError(Kind::Changed, path));
}

TEST(BodyStream, GoesOnWithTheFileThatItHasOpen)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abcdef");
    BodyStream body;
    body.appendFile(path);
    std::array<std::byte, 2> buffer;
    ASSERT_EQ(body.read(buffer), 2U);

    std::filesystem::remove(path);

    EXPECT_EQ(rest(body), "cdef");
}

TEST(BodyStream, GoesOnOnceAFileIsBack)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "abc");
    BodyStream body;
    body.append("[");
    body.appendFile(path);
    std::filesystem::rename(path, folder.file("b"));
    ASSERT_EQ(errorOf(body).kind(), Kind::CannotOpen);

    std::filesystem::rename(folder.file("b"), path);

    EXPECT_EQ(rest(body), "[abc");
}

TEST(BodyStream, HasAtMostOneFileOpen)
{
    const TemporaryFolder folder;
    BodyStream body;
    const auto openFiles = [] {
        const auto files = std::filesystem::directory_iterator("/proc/self/fd");
        return std::distance(begin(files), end(files));
    };
    const auto before = openFiles();
    for (int file = 0; file < 100; ++file)
        body.appendFile(folder.file(std::to_string(file), "ab"));
    EXPECT_EQ(openFiles(), before);

    std::array<std::byte, 3> buffer;
    while (body.read(buffer) > 0)
        EXPECT_LE(openFiles(), before + 1);

    EXPECT_EQ(openFiles(), before);
}

TEST(BodyStream, TakesNoMemoryForAFileOfAGigabyte)
{
    const TemporaryFolder folder;
    const auto path = folder.file("large", "begin");
    constexpr std::uint64_t gigabyte = 1 << 30;
    std::filesystem::resize_file(path, gigabyte); // of holes, which take no room on the disk either
    BodyStream body;
    body.appendFile(path);
    body.append("end");
    std::vector<std::byte> buffer(1 << 16);
    const auto before = peakMemoryInKilobytes();

    std::uint64_t sum = 0;
    while (const auto count = body.read(buffer))
        sum += count;

    EXPECT_EQ(sum, gigabyte + 3);
    EXPECT_LE(peakMemoryInKilobytes() - before, 8 * 1024); // some of it a sanitizer's own
}

TEST(BodyStreamError, IsAValueThatIsAPlatformErrorAsWell)
{
    const auto error = BodyStreamError(Kind::CannotRead, "photo.jpg", EIO);

    EXPECT_EQ(error.description(), "The file \"photo.jpg\" cannot be read: Input/output error");
    EXPECT_EQ(error.nsError().code(), 5);
    EXPECT_EQ(error.nsError().localizedDescription(), error.description());
    EXPECT_NE(error, BodyStreamError(Kind::CannotRead, "photo.jpg"));
    EXPECT_NE(error, BodyStreamError(Kind::CannotRead, "other.jpg", EIO));
    EXPECT_NE(error, BodyStreamError(Kind::CannotOpen, "photo.jpg", EIO));
    EXPECT_EQ(BodyStreamError(Kind::NoRegularFile, "a").description(), "The file \"a\" is no regular file");
    EXPECT_EQ(BodyStreamError(Kind::Changed, "a").description(),
        "The file \"a\" changed since it was added to the body");
}

} // namespace
