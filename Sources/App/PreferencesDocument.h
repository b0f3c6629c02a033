#pragma once

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Base/Preferences.h"

namespace stintbook {

/// The text of a preferences file: TOML, in which the key "stintbook.capture.titleContext" is `titleContext` in
/// the table `[stintbook.capture]`.
///
/// A change touches the line that it is about: comments, order and keys that are nobody's stay as their author
/// wrote them. Only a text that puts a key where no line can be changed (in a table on one line, say) is
/// written anew, without its comments.
class PreferencesDocument {
public:
    /// An empty one.
    PreferencesDocument() = default;
    /// The error says what is wrong with the text, and where.
    static std::expected<PreferencesDocument, std::string> parse(std::string text);

    /// None where the key is absent or is none of the types of a preference.
    std::optional<PreferenceValue> value(std::string_view key) const;
    /// None removes the key. The comment, of one line or none, is put above a key that is added, and goes
    /// with it.
    void set(std::string_view key, const std::optional<PreferenceValue>& value, std::string_view comment);

    const std::string& text() const { return m_text; }

private:
    /// What a text says.
    struct Meaning;

    PreferencesDocument(std::string text, std::shared_ptr<const Meaning> meaning)
        : m_text(std::move(text))
        , m_meaning(std::move(meaning))
    {
    }

    std::string m_text;
    /// Null for the empty document.
    std::shared_ptr<const Meaning> m_meaning;
};

} // namespace stintbook
