/// @file
/// What building requests costs: a multipart body beside one copy of its payload, a body read from a file
/// beside reading the file, chains of header fields.

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

using namespace orrenby;

namespace {

URLRequest photosRequest() { return URLRequest("https://example.org/photos"_url); }

HTTPBodyFormDataPart photo(const benchmark::State& state)
{
    return {.data = Data(static_cast<std::size_t>(state.range(0)), std::byte('x')), .mimetype = "image/jpeg"};
}

void countBytes(benchmark::State& state) { state.SetBytesProcessed(state.iterations() * state.range(0)); }

/// A file of holes, which is gone with it.
class HollowFile {
public:
    explicit HollowFile(std::int64_t size)
        : m_descriptor(::mkstemp(m_path.data()))
    {
        if (m_descriptor < 0 || ::ftruncate(m_descriptor, size) != 0)
            std::abort();
    }
    HollowFile(const HollowFile&) = delete;
    HollowFile& operator=(const HollowFile&) = delete;
    ~HollowFile()
    {
        ::close(m_descriptor);
        ::unlink(m_path.c_str());
    }

    const std::string& path() const { return m_path; }
    int descriptor() const { return m_descriptor; }

private:
    std::string m_path = "orrenby-benchmark-XXXXXX";
    int m_descriptor;
};

double peakMemoryInKilobytes()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss);
}

/// The payload into a buffer of its size that was just allocated, as a body is.
void payload_memcpy(benchmark::State& state)
{
    const auto media = photo(state);
    for (auto _ : state) {
        auto* const copy = static_cast<std::byte*>(::operator new(media.data.size()));
        std::memcpy(copy, media.data.data(), media.data.size());
        benchmark::DoNotOptimize(copy);
        benchmark::ClobberMemory();
        ::operator delete(copy);
    }
    countBytes(state);
}

/// The payload into a buffer that is used again and again.
void payload_memcpyInPlace(benchmark::State& state)
{
    const auto media = photo(state);
    auto copy = media.data;
    for (auto _ : state) {
        std::memcpy(copy.data(), media.data.data(), media.data.size());
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
    countBytes(state);
}

void attaching_direct(benchmark::State& state)
{
    const auto media = photo(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(attaching(photosRequest(), media, 3));
    countBytes(state);
}

void attaching_chainOfViews(benchmark::State& state)
{
    const auto media = photo(state);
    const auto bytes = std::span(media.data);
    for (auto _ : state)
        benchmark::DoNotOptimize(photosRequest() | using_(HTTPMethod::post) | signed_("t0k3n")
            | attaching(bytes, "image/jpeg") | addingHeader("Accept", "text/plain"));
    countBytes(state);
}

void addingBodyPart_closed(benchmark::State& state)
{
    const auto media = photo(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(photosRequest()
            | addingBodyPart(
                {.key = "photo", .value = media.data, .boundary = "B-7", .contentType = media.mimetype})
            | closingBody("B-7"));
    countBytes(state);
}

/// A thousand small parts, one after the other.
void addingBodyPart_thousand(benchmark::State& state)
{
    for (auto _ : state) {
        auto request = photosRequest();
        for (int part = 0; part < 1000; ++part)
            request = addingBodyPart(std::move(request),
                {.key = "k", .value = "v", .boundary = "B-7", .contentType = "text/plain"});
        benchmark::DoNotOptimize(request);
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}

void file_pread(benchmark::State& state)
{
    const HollowFile file(state.range(0));
    Data buffer(1 << 16);
    for (auto _ : state) {
        off_t offset = 0;
        while (const auto count = ::pread(file.descriptor(), buffer.data(), buffer.size(), offset))
            offset += count;
        benchmark::DoNotOptimize(offset);
    }
    countBytes(state);
}

void bodyStream_read(benchmark::State& state)
{
    const HollowFile file(state.range(0));
    auto upload = makeStreamedUpload({.path = file.path(), .mimetype = "image/jpeg"});
    Data buffer(1 << 16);
    const double before = peakMemoryInKilobytes();
    for (auto _ : state) {
        upload.body.restart();
        while (upload.body.read(buffer) > 0)
            benchmark::DoNotOptimize(buffer.data());
    }
    countBytes(state);
    state.counters["KB of memory"] = peakMemoryInKilobytes() - before;
}

void headers_chain(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(photosRequest() | using_(HTTPMethod::post) | signed_("t0k3n")
            | addingHeader("Accept", "text/plain"));
}

} // namespace

BENCHMARK(payload_memcpy)->Arg(10 << 20);
BENCHMARK(payload_memcpyInPlace)->Arg(10 << 20);
BENCHMARK(attaching_direct)->Arg(10 << 20);
BENCHMARK(attaching_chainOfViews)->Arg(10 << 20);
BENCHMARK(addingBodyPart_closed)->Arg(10 << 20);
BENCHMARK(addingBodyPart_thousand);
BENCHMARK(file_pread)->Arg(1 << 30)->Unit(benchmark::kMillisecond);
BENCHMARK(bodyStream_read)->Arg(1 << 30)->Unit(benchmark::kMillisecond);
BENCHMARK(headers_chain);
