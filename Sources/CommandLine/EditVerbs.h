#pragma once

#include <string>
#include <vector>

#include "CommandLine/CommandTree.h"

namespace stintbook {

/// The verbs of a noun that change one thing of a book: `client archive CLIENT`, `project rate PROJECT RATE`.
/// `Resolve` answers from (Book&, text) which thing is meant.
template <typename Book, typename Resolve> class EditVerbs {
public:
    EditVerbs(Noun& noun, const char* argument, const char* description, Resolve resolve)
        : m_noun(noun)
        , m_argument(argument)
        , m_description(description)
        , m_resolve(resolve)
    {
    }

    /// `edit(book, id)`
    template <typename Edit> void add(const char* name, const char* description, Edit edit)
    {
        auto verb = m_noun.verb(name, description);
        const auto& text = verb.argument(m_argument, m_description);
        verb.runs([&text, edit, resolve = m_resolve](Session& session) {
            Book book(session.store());
            orRefuse(edit(book, resolve(book, text)));
        });
    }

    /// `edit(book, id, value)`; with choices, the value is one of them.
    template <typename Edit>
    void addWithValue(const char* name, const char* description, const char* valueName, Edit edit,
                      const std::vector<std::string>& choices = {})
    {
        auto verb = m_noun.verb(name, description);
        const auto& text = verb.argument(m_argument, m_description);
        const auto& value = choices.empty() ? verb.argument(valueName, "The new value")
                                            : verb.argument(valueName, "The new value", choices);
        verb.runs([&text, &value, edit, resolve = m_resolve](Session& session) {
            Book book(session.store());
            orRefuse(edit(book, resolve(book, text), value));
        });
    }

private:
    Noun& m_noun;
    const char* m_argument;
    const char* m_description;
    Resolve m_resolve;
};

template <typename Book, typename Resolve>
EditVerbs<Book, Resolve> editVerbs(Noun& noun, const char* argument, const char* description, Resolve resolve)
{
    return {noun, argument, description, resolve};
}

} // namespace stintbook
