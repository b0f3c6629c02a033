#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "Base/Identifier.h"

namespace stintbook {

using ClientID = Identifier<struct ClientKindTag>;
using ProjectID = Identifier<struct ProjectKindTag>;

/// A colour in the normal form "#RRGGBB", upper case.
class ClientColor {
public:
    /// White space at both ends and one leading '#' are dropped; six hexadecimal digits must remain.
    static std::optional<ClientColor> fromText(std::optional<std::string_view> text);

    const std::string& hex() const { return m_hex; }

    friend bool operator==(const ClientColor&, const ClientColor&) = default;

private:
    explicit ClientColor(std::string hex)
        : m_hex(std::move(hex))
    {
    }

    std::string m_hex;
};

struct Client {
    ClientID id;
    std::string name;
    bool isArchived = false;
    std::optional<ClientColor> color;

    friend bool operator==(const Client&, const Client&) = default;
};

struct Project {
    ProjectID id;
    /// Set at creation and never changed.
    ClientID clientID;
    std::string name;
    /// What work takes unless a rule or a review says otherwise.
    bool defaultBillable = true;
    bool isArchived = false;

    friend bool operator==(const Project&, const Project&) = default;
};

/// How many records of each kind name a client or project.
struct ClientReferences {
    int corrections = 0;
    int reviewedItems = 0;
    int rules = 0;
    int exports = 0;

    bool areNone() const { return corrections + reviewedItems + rules + exports == 0; }

    friend bool operator==(const ClientReferences&, const ClientReferences&) = default;
};

struct ClientReferenceCensus {
    std::map<ClientID, ClientReferences> byClient;
    std::map<ProjectID, ClientReferences> byProject;
};

} // namespace stintbook
