#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "Domain/ActivitySegment.h"
#include "Domain/AssignmentDirectory.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// Random segments and rules over few applications, hosts and words, so that they meet often. The same
/// seed gives the same work.
class RandomWork {
public:
    explicit RandomWork(unsigned seed)
        : m_engine(seed)
    {
        std::vector<Client> clients;
        std::vector<Project> projects;
        for (int i = 0; i < 3; ++i) {
            clients.push_back({.id = {uuid()}, .name = "Client", .isArchived = i == 2});
            for (int j = 0; j < 2; ++j)
                projects.push_back({.id = {uuid()},
                                    .clientID = clients.back().id,
                                    .name = "Project",
                                    .defaultBillable = j == 0,
                                    .isArchived = i == 1 && j == 1});
        }
        m_directory = AssignmentDirectory(std::move(clients), std::move(projects));
    }

    std::size_t below(std::size_t bound) { return m_engine() % bound; }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <typename T> const T& anyOf(std::span<const T> choices)
    {
        return choices[below(choices.size())];
    }

    UUID uuid()
    {
        UUID id;
        for (auto& byte : id.bytes)
            byte = static_cast<std::uint8_t>(m_engine());
        return id;
    }

    /// Three clients with two projects each; one client and one project are archived.
    const AssignmentDirectory& directory() const { return m_directory; }

    /// Observed work; some of it without a title, a domain or even an application.
    ActivitySegment segment(Instant start, Seconds length)
    {
        ActivitySegment segment{.id = {uuid()}, .start = start, .end = start + length};
        if (!oneIn(20)) {
            const auto& name = anyOf<std::string>(applications);
            segment.application = ApplicationIdentity{name, name};
        }
        if (oneIn(3))
            segment.browserDomain = BrowserDomain::fromText(anyOf<std::string>(segmentHosts));
        if (!oneIn(4))
            segment.context =
                FocusedContext::windowTitle(anyOf<std::string>(words) + " " + anyOf<std::string>(words));
        segment.evidence = segment.context.isNone() ? ContextEvidence::applicationOnly
                                                    : ContextEvidence::applicationAndWindow;
        return segment;
    }

    RuleMatch match()
    {
        RuleMatch match;
        if (oneIn(2))
            match.applicationBundleIdentifier = anyOf<std::string>(applications);
        if (oneIn(3))
            match.browserDomain = BrowserDomain::fromText(anyOf<std::string>(ruleHosts));
        if (match.isEmpty() || oneIn(3))
            match.titleContains = anyOf<std::string>(needles);
        return match;
    }

    AttributionRule rule()
    {
        const auto& project = anyOf<Project>(directory().projects());
        AttributionRule rule{.id = {uuid()},
                             .isEnabled = !oneIn(6),
                             .priority = static_cast<int>(below(10)),
                             .match = match(),
                             .clientID = project.clientID,
                             .projectID = oneIn(12) ? ProjectID{uuid()} : project.id};
        if (oneIn(3))
            rule.billableOverride = oneIn(2);
        return rule;
    }

    std::vector<AttributionRule> rules(std::size_t count)
    {
        std::vector<AttributionRule> rules;
        while (rules.size() < count)
            rules.push_back(rule());
        return rules;
    }

private:
    inline static const std::vector<std::string> applications{"editor", "Editor", "browser", "mail",
                                                              "terminal"};
    inline static const std::vector<std::string> segmentHosts{
        "example.org", "a.example.org", "a.b.example.org", "notexample.org", "example.org.evil.net", "org"};
    inline static const std::vector<std::string> ruleHosts{"example.org", "b.example.org", "org", "evil.net"};
    inline static const std::vector<std::string> words{"Résumé", "ROADMAP",   "strasse",  "Straße",
                                                       "Ǆungla", "e\u0301té", "map road", "Ωmega — "};
    inline static const std::vector<std::string> needles{"resume", "Road", "ROADMAP", "map", "STRASSE",
                                                         "é",      "p r",  "ωMEGA",   "sum", "oad"};

    std::minstd_rand m_engine;
    AssignmentDirectory m_directory;
};

} // namespace stintbook
