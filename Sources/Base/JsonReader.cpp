#include "Base/JsonReader.h"

#include <iterator>
#include <limits>

#include <fmt/format.h>
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include "Base/Try.h"

namespace stintbook {

namespace {

/// Of one value in bytes: far more than any record has, and few enough to hold.
constexpr std::size_t longestValue = 64 << 20;
constexpr int deepestNesting = 16;
constexpr std::streamsize bufferSize = 65'536;

/// What a zero byte in the document, which the parser would take for its end, is read as: allowed nowhere.
constexpr char nowhereAllowed = '\x01';

// NOLINTBEGIN(readability-identifier-naming): the names of RapidJSON's concepts

/// The bytes of a stream or of a text, with the line that they stand on.
class Source {
public:
    using Ch = char;

    explicit Source(std::istream& stream)
        : m_stream(&stream)
        , m_buffer(std::make_unique_for_overwrite<char[]>(bufferSize))
    {
    }
    explicit Source(std::string_view text)
        : m_begin(text.data())
        , m_next(text.data())
        , m_end(text.data() + text.size())
    {
        beginValue();
    }

    char Peek()
    {
        if (m_next == m_stop) [[unlikely]]
            return peekBehindStop();
        return shown(*m_next);
    }
    char Take()
    {
        const char character = Peek();
        if (m_next == m_stop)
            return character;
        m_line += *m_next == '\n' ? 1 : 0;
        ++m_next;
        return character;
    }
    std::size_t Tell() const { return m_passed + static_cast<std::size_t>(m_next - m_begin); }
    // For parsing in place alone.
    static char* PutBegin() { return nullptr; }
    static void Put(char) { }
    static std::size_t PutEnd(char*) { return 0; }

    std::size_t line() const { return m_line; }
    void beginValue(std::size_t longest = longestValue)
    {
        m_longest = longest;
        m_valueStart = Tell();
        findStop();
    }
    bool isValueTooLong() const { return Tell() - m_valueStart >= m_longest; }
    bool isBroken() const { return m_stream != nullptr && m_stream->bad(); }

private:
    char peekBehindStop()
    {
        if (isValueTooLong())
            return nowhereAllowed;
        if (m_stream == nullptr)
            return '\0';
        m_passed = Tell();
        m_stream->read(m_buffer.get(), bufferSize);
        m_begin = m_next = m_buffer.get();
        m_end = m_next + m_stream->gcount();
        findStop();
        return m_next == m_stop ? '\0' : shown(*m_next);
    }
    static char shown(char byte) { return byte == '\0' ? nowhereAllowed : byte; }
    /// Where the bytes at hand end, or the value must.
    void findStop()
    {
        const auto left = m_longest - (Tell() - m_valueStart);
        m_stop = left < static_cast<std::size_t>(m_end - m_next) ? m_next + left : m_end;
    }

    std::istream* m_stream = nullptr;
    std::unique_ptr<char[]> m_buffer;
    /// What is at hand, what is next of it, and where reading on needs a closer look.
    const char* m_begin = nullptr;
    const char* m_next = nullptr;
    const char* m_end = nullptr;
    const char* m_stop = nullptr;
    /// Before what is at hand.
    std::size_t m_passed = 0;
    std::size_t m_line = 1;
    std::size_t m_valueStart = 0;
    std::size_t m_longest = longestValue;
};

// NOLINTEND(readability-identifier-naming)

} // namespace

struct JsonReader::Implementation {
    class Recorder;

    explicit Implementation(auto&& input)
        : source(input)
    {
    }

    std::unexpected<JsonProblem> problem(std::string reason) const
    {
        return std::unexpected(JsonProblem{source.line(), {}, std::move(reason)});
    }
    /// The next character that is no white space.
    char next()
    {
        rapidjson::SkipWhitespace(source);
        return source.Peek();
    }
    bool takes(char expected)
    {
        if (next() != expected)
            return false;
        source.Take();
        return true;
    }
    template <typename Handler> JsonRead<void> parse(Handler& handler);
    JsonRead<JsonValue> value();

    Source source;
    rapidjson::Reader parser;
    JsonValue::Tape tape;
};

// NOLINTBEGIN(readability-identifier-naming): the names of RapidJSON's concepts

/// Writes down what the parser meets.
class JsonReader::Implementation::Recorder {
public:
    using Kind = JsonValue::Kind;

    Recorder(JsonValue::Tape& tape, const Source& source)
        : m_tape(tape)
        , m_source(source)
    {
        m_tape.nodes.clear();
        m_tape.texts.clear();
    }

    bool isTooDeep() const { return std::ssize(m_open) > deepestNesting; }

    bool Null() { return add(Kind::null); }
    bool Bool(bool flag)
    {
        add(Kind::boolean);
        m_tape.nodes.back().flag = flag;
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool)
    {
        return add(Kind::number, {text, length});
    }
    bool String(const char* text, rapidjson::SizeType length, bool)
    {
        return add(Kind::text, {text, length});
    }
    bool Key(const char* text, rapidjson::SizeType length, bool)
    {
        m_keyOffset = m_tape.texts.size();
        m_keyLength = length;
        m_tape.texts.append(text, length);
        return true;
    }
    bool StartObject() { return open(Kind::object); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool StartArray() { return open(Kind::array); }
    bool EndArray(rapidjson::SizeType) { return close(); }
    // Numbers come as they are written.
    static bool Int(int) { return false; }
    static bool Uint(unsigned) { return false; }
    static bool Int64(std::int64_t) { return false; }
    static bool Uint64(std::uint64_t) { return false; }
    static bool Double(double) { return false; }

private:
    bool add(Kind kind, std::string_view text = {})
    {
        m_tape.nodes.push_back(JsonValue::Node{.kind = kind,
                                               .line = m_source.line(),
                                               .offset = m_tape.texts.size(),
                                               .length = text.size(),
                                               .keyOffset = m_keyOffset,
                                               .keyLength = m_keyLength,
                                               .next = m_tape.nodes.size() + 1});
        m_tape.texts.append(text);
        return true;
    }
    bool open(Kind kind)
    {
        m_open.push_back(m_tape.nodes.size());
        return !isTooDeep() && add(kind);
    }
    bool close()
    {
        m_tape.nodes[m_open.back()].next = m_tape.nodes.size();
        m_open.pop_back();
        return true;
    }

    JsonValue::Tape& m_tape;
    const Source& m_source;
    std::vector<std::size_t> m_open;
    std::size_t m_keyOffset = 0;
    std::size_t m_keyLength = 0;
};

/// Minds nothing but the depth.
struct Ignoring : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Ignoring> {
    bool StartObject() { return ++depth <= deepestNesting; }
    bool StartArray() { return ++depth <= deepestNesting; }
    bool EndObject(rapidjson::SizeType) { return --depth >= 0; }
    bool EndArray(rapidjson::SizeType) { return --depth >= 0; }
    bool isTooDeep() const { return depth > deepestNesting; }

    int depth = 0;
};

// NOLINTEND(readability-identifier-naming)

template <typename Handler> JsonRead<void> JsonReader::Implementation::parse(Handler& handler)
{
    constexpr unsigned flags = rapidjson::kParseStopWhenDoneFlag | rapidjson::kParseIterativeFlag
        | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseValidateEncodingFlag;
    const auto parsed = parser.Parse<flags>(source, handler);
    if (source.isBroken())
        return problem("could not be read");
    if (source.isValueTooLong())
        return problem("is longer than anything that is stored");
    if (handler.isTooDeep())
        return problem("is nested deeper than anything that is stored");
    if (parsed.IsError())
        return problem(fmt::format("is no JSON ({})", rapidjson::GetParseError_En(parsed.Code())));
    return {};
}

JsonRead<JsonValue> JsonReader::Implementation::value()
{
    source.beginValue();
    Recorder recorder(tape, source);
    TRY(parse(recorder));
    return JsonValue(tape, 0);
}

JsonReader::JsonReader(std::istream& stream)
    : m_implementation(std::make_unique<Implementation>(stream))
{
}

JsonReader::JsonReader(std::string_view text)
    : m_implementation(std::make_unique<Implementation>(text))
{
}

void JsonReader::startOver(std::string_view text)
{
    m_implementation->source = Source(text);
}

JsonReader::~JsonReader() = default;

JsonRead<void> JsonReader::object(const std::function<JsonRead<void>(const std::string& key)>& visit)
{
    auto& json = *m_implementation;
    if (!json.takes('{'))
        return json.problem("is no object");
    if (json.takes('}'))
        return {};
    do {
        if (json.next() != '"')
            return json.problem("is no JSON (a key is missing)");
        const std::string key(TRY(TRY(json.value()).text()));
        if (!json.takes(':'))
            return json.problem("is no JSON (a colon is missing behind a key)");
        if (auto visited = visit(key); !visited)
            return std::unexpected(within(key, std::move(visited).error()));
    } while (json.takes(','));
    if (!json.takes('}'))
        return json.problem("is no JSON (a comma or the end of an object is missing)");
    return {};
}

JsonRead<void> JsonReader::array(const std::function<JsonRead<void>(const JsonValue& element)>& visit)
{
    auto& json = *m_implementation;
    if (!json.takes('['))
        return json.problem("is no list");
    if (json.takes(']'))
        return {};
    for (std::size_t place = 0;; ++place) {
        auto element = json.value();
        auto visited = element ? visit(*element) : std::unexpected(std::move(element).error());
        if (!visited)
            return std::unexpected(within(fmt::format("[{}]", place), std::move(visited).error()));
        if (json.takes(']'))
            return {};
        if (!json.takes(','))
            return json.problem("is no JSON (a comma or the end of a list is missing)");
    }
}

JsonRead<JsonValue> JsonReader::value()
{
    return m_implementation->value();
}

JsonRead<void> JsonReader::skip()
{
    m_implementation->source.beginValue(std::numeric_limits<std::size_t>::max());
    Ignoring ignoring;
    return m_implementation->parse(ignoring);
}

JsonRead<void> JsonReader::end()
{
    if (m_implementation->next() != '\0')
        return m_implementation->problem("is followed by something else");
    return {};
}

std::size_t JsonReader::line() const
{
    return m_implementation->source.line();
}

std::size_t JsonReader::position() const
{
    return m_implementation->source.Tell();
}

} // namespace stintbook
