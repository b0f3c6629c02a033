#include "Base/Json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <variant>

#include <fmt/format.h>
#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/writer.h>

#include "Base/Text.h"

namespace stintbook {

namespace {

struct StringStream {
    using Ch = char; // NOLINT(readability-identifier-naming): names of RapidJSON's concept

    std::string& output;

    void Put(char c) { output.push_back(c); } // NOLINT(readability-identifier-naming)
    void Flush() { } // NOLINT(readability-identifier-naming)
};

using CompactWriter = rapidjson::Writer<StringStream>;
using IndentedWriter = rapidjson::PrettyWriter<StringStream>;

rapidjson::SizeType length(std::string_view text)
{
    return static_cast<rapidjson::SizeType>(text.size());
}

} // namespace

struct JsonWriter::Implementation {
    Implementation(std::string& output, Layout layout)
        : stream{output}
    {
        if (layout == Layout::indented)
            writer.emplace<IndentedWriter>(stream).SetIndent(' ', 2);
        else
            writer.emplace<CompactWriter>(stream);
    }

    template <typename Write> void with(Write write)
    {
        if (auto* compact = std::get_if<CompactWriter>(&writer))
            write(*compact);
        else if (auto* indented = std::get_if<IndentedWriter>(&writer))
            write(*indented);
    }

    void rawNumber(std::string_view text)
    {
        with([&](auto& to) { to.RawValue(text.data(), text.size(), rapidjson::kNumberType); });
    }

    StringStream stream;
    std::variant<std::monostate, CompactWriter, IndentedWriter> writer;
};

JsonWriter::JsonWriter(std::string& output, Layout layout)
    : m_implementation(std::make_unique<Implementation>(output, layout))
{
}

JsonWriter::~JsonWriter() = default;

void JsonWriter::beginObject()
{
    m_implementation->with([](auto& to) { to.StartObject(); });
}

void JsonWriter::endObject()
{
    m_implementation->with([](auto& to) { to.EndObject(); });
}

void JsonWriter::beginArray()
{
    m_implementation->with([](auto& to) { to.StartArray(); });
}

void JsonWriter::endArray()
{
    m_implementation->with([](auto& to) { to.EndArray(); });
}

void JsonWriter::key(std::string_view name)
{
    m_implementation->with([&](auto& to) { to.Key(name.data(), length(name)); });
}

void JsonWriter::value(std::string_view text)
{
    if (!isValidUTF8(text))
        return value(wellFormed(text));
    // RapidJSON asks for a pointer also where there is nothing to point at.
    const char* const begin = text.empty() ? "" : text.data();
    m_implementation->with([&](auto& to) { to.String(begin, length(text)); });
}

void JsonWriter::value(bool flag)
{
    m_implementation->with([&](auto& to) { to.Bool(flag); });
}

void JsonWriter::value(std::int64_t number)
{
    m_implementation->with([&](auto& to) { to.Int64(number); });
}

void JsonWriter::value(double number)
{
    if (std::isfinite(number))
        m_implementation->rawNumber(shortestText(number));
    else
        m_implementation->with([](auto& to) { to.Null(); });
}

void JsonWriter::value(const Decimal& number)
{
    m_implementation->rawNumber(number.text());
}

void JsonWriter::value(const UUID& id)
{
    value(id.upperCaseText());
}

std::string shortestText(double number)
{
    if (number == 0)
        return "0";
    const double magnitude = std::abs(number);
    const auto format =
        magnitude >= 1e-7 && magnitude < 1e21 ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, format).ptr;
    return {text.data(), end};
}

std::expected<rapidjson::Document, std::string> parseJson(std::string_view text)
{
    constexpr unsigned flags = rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag
        | rapidjson::kParseIterativeFlag;
    rapidjson::Document document;
    document.Parse<flags>(text.empty() ? "" : text.data(), text.size());
    if (document.HasParseError())
        return std::unexpected(fmt::format("at byte {}: {}", document.GetErrorOffset(),
                                           rapidjson::GetParseError_En(document.GetParseError())));
    return document;
}

} // namespace stintbook
