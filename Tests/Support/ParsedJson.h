#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include <rapidjson/document.h>

namespace stintbook {

/// A document for a test to look into; throws when the text is none.
inline rapidjson::Document parsedJson(const std::string& text)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag>(text);
    if (document.HasParseError())
        throw std::runtime_error("no JSON: " + text);
    return document;
}

} // namespace stintbook
