#include "Upload/CurlTransport.hpp"

#include "Orrenby/Platform/Net/BodyStreamError.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Terminal/Text.hpp"
#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <curl/curl.h>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace fieldbook {

namespace {

using Subject = orrenby::Streams::PassthroughSubject<TransportNews, TransportFailure>;
using Kind = TransportFailure::Kind;

constexpr std::size_t answerLimit = 1024 * 1024;
constexpr long pieceSize = 16L * 1024; // small, so that people see photos go out

struct EndCurl {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct EndList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

/// A line break would begin a header field of its own.
bool fitsInHeader(std::string_view text)
{
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

/// One request on its way. The functions that the library below calls find it behind their last argument.
class Exchange {
public:
    Exchange(orrenby::URLRequest request, orrenby::BodyStream body)
        : m_request(std::move(request))
        , m_body(std::move(body))
    {
        if (auto own = m_request.takeHTTPBody(); own && m_body.length() == 0)
            m_body.append(*std::move(own));
    }

    /// From any thread.
    void breakOff() { m_isBrokenOff = true; }

    /// Blocks until there is an answer or none to come.
    void perform(Subject subject)
    {
        if (m_isBrokenOff)
            return;
        m_subject = &subject;
        const auto handle = std::unique_ptr<CURL, EndCurl>(curl_easy_init());
        const auto headers = handle ? headerList() : std::nullopt;
        if (!headers)
            return subject.send(failure(Kind::malformed, "the request cannot be written"));
        prepare(handle.get(), headers->get());
        const auto code = curl_easy_perform(handle.get());
        if (m_isBrokenOff)
            return;
        if (m_bodyProblem)
            return subject.send(failure(Kind::bodyUnreadable, *m_bodyProblem));
        if (code != CURLE_OK)
            return subject.send(failure(kindOf(code), reasonOf(code)));
        long status = 0;
        curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
        subject.send(
            TransportNews(Answer{static_cast<int>(status), std::move(m_answer), std::move(m_headers)}));
    }

private:
    using List = std::unique_ptr<curl_slist, EndList>;

    static orrenby::Streams::FailureOf<TransportFailure> failure(Kind kind, std::string reason)
    {
        return orrenby::Streams::failure(TransportFailure{kind, std::move(reason)});
    }

    std::optional<List> headerList() const
    {
        List list;
        for (const auto& [name, value] : m_request.httpHeaders()) {
            if (!fitsInHeader(name) || !fitsInHeader(value))
                return {};
            // A field without value has a form of its own.
            const auto line = value.empty() ? name + ";" : name + ": " + value;
            auto* const longer = curl_slist_append(list.get(), line.c_str());
            if (longer == nullptr)
                return {};
            static_cast<void>(list.release());
            list.reset(longer);
        }
        return list;
    }

    void prepare(CURL* handle, curl_slist* headers)
    {
        const auto patience = std::max(1L, static_cast<long>(m_request.timeoutInterval()));
        curl_easy_setopt(handle, CURLOPT_URL, m_request.url().absoluteString().c_str());
        curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
        curl_easy_setopt(handle, CURLOPT_NOPROXY, "127.0.0.1,localhost");
        curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, patience);
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, patience);
        curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
        curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, m_reason.data());
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Exchange::receive);
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
        curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &Exchange::receiveHeader);
        curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
        curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &Exchange::isToStop);
        curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
        curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
        if (m_body.length() > 0) {
            curl_easy_setopt(handle, CURLOPT_UPLOAD, 1L);
            curl_easy_setopt(handle, CURLOPT_UPLOAD_BUFFERSIZE, pieceSize);
            curl_easy_setopt(handle, CURLOPT_READFUNCTION, &Exchange::read);
            curl_easy_setopt(handle, CURLOPT_READDATA, this);
            curl_easy_setopt(handle, CURLOPT_SEEKFUNCTION, &Exchange::seek);
            curl_easy_setopt(handle, CURLOPT_SEEKDATA, this);
            curl_easy_setopt(handle, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(m_body.length()));
        }
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, m_request.httpMethod().c_str());
    }

    static std::size_t read(char* buffer, std::size_t size, std::size_t count, void* self)
    {
        auto& exchange = *static_cast<Exchange*>(self);
        const auto outcome = exchange.m_body.tryRead(std::as_writable_bytes(std::span(buffer, size * count)));
        if (const auto problem = outcome.error()) {
            exchange.m_bodyProblem = problem->description();
            return CURL_READFUNC_ABORT;
        }
        if (outcome.unwrap() > 0)
            exchange.m_subject->send(
                TransportNews(BytesSent{exchange.m_body.offset(), exchange.m_body.length()}));
        return outcome.unwrap();
    }

    /// The library below goes back when a connection that it kept turns out to be gone.
    static int seek(void* self, curl_off_t offset, int)
    {
        const bool isDone = static_cast<Exchange*>(self)->m_body.restart(static_cast<std::uint64_t>(offset));
        return isDone ? CURL_SEEKFUNC_OK : CURL_SEEKFUNC_FAIL;
    }

    static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* self)
    {
        auto& answer = static_cast<Exchange*>(self)->m_answer;
        if (answer.size() + size * count > answerLimit)
            return 0;
        answer.append(bytes, size * count);
        return size * count;
    }

    /// The library below limits how long and how many they are.
    static std::size_t receiveHeader(char* bytes, std::size_t size, std::size_t count, void* self)
    {
        auto& headers = static_cast<Exchange*>(self)->m_headers;
        auto line = std::string_view(bytes, size * count);
        line = line.substr(0, line.find_last_not_of("\r\n") + 1);
        if (line.starts_with("HTTP/"))
            headers.clear(); // of an answer that went before
        else if (const auto colon = line.find(':'); colon != std::string_view::npos)
            headers.set(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
        return size * count;
    }

    static int isToStop(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
    {
        return static_cast<Exchange*>(self)->m_isBrokenOff ? 1 : 0;
    }

    static Kind kindOf(CURLcode code)
    {
        switch (code) {
        case CURLE_COULDNT_CONNECT:
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
            return Kind::noConnection;
        case CURLE_OPERATION_TIMEDOUT:
            return Kind::timedOut;
        case CURLE_URL_MALFORMAT:
        case CURLE_UNSUPPORTED_PROTOCOL:
            return Kind::malformed;
        default:
            return Kind::brokenOff;
        }
    }

    std::string reasonOf(CURLcode code) const
    {
        const auto reason = std::string(m_reason.data());
        return printable(reason.empty() ? curl_easy_strerror(code) : reason);
    }

    orrenby::URLRequest m_request;
    orrenby::BodyStream m_body;
    Subject* m_subject = nullptr;
    std::atomic<bool> m_isBrokenOff = false;
    std::optional<std::string> m_bodyProblem;
    std::string m_answer;
    orrenby::HTTPHeaders m_headers;
    std::array<char, CURL_ERROR_SIZE> m_reason{};
};

void prepareCurl()
{
    static const auto outcome = curl_global_init(CURL_GLOBAL_DEFAULT);
    static_cast<void>(outcome); // what is missing shows in each request
}

} // namespace

CurlTransport::CurlTransport()
    : m_queue(orrenby::DispatchQueue::concurrent("transport"))
{
    prepareCurl();
}

CurlTransport::~CurlTransport()
{
    m_queue.barrierSync([] {});
}

Transport::News CurlTransport::send(orrenby::URLRequest request, orrenby::BodyStream body)
{
    const auto exchange = std::make_shared<Exchange>(std::move(request), std::move(body));
    return orrenby::Streams::create<TransportNews, TransportFailure>([exchange, queue = m_queue](
                                                                         Subject subject) {
        queue.async([exchange, subject] { exchange->perform(subject); });
        return [exchange] { exchange->breakOff(); };
    }).receive(orrenby::DispatchQueue::main());
}

} // namespace fieldbook
