#pragma once

#include <random>
#include <string>
#include <vector>

#include "Domain/AssignmentDirectory.h"
#include "Review/FreeSegments.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// A thousand rules with conditions of every kind, and work that meets some of them: the same in every run, but
/// for the identifiers.
class CrowdedRules {
public:
    CrowdedRules()
    {
        const Client client{.id = ClientID::random(), .name = "Client"};
        std::vector<Project> projects;
        for (int i = 0; i < 20; ++i)
            projects.push_back({.id = ProjectID::random(), .clientID = client.id, .name = "Project"});
        for (int i = 0; i < 1000; ++i)
            rules.push_back({.id = RuleID::random(),
                             .priority = i,
                             .match = match(i),
                             .clientID = client.id,
                             .projectID = projects[below(projects.size())].id});
        directory = AssignmentDirectory({client}, std::move(projects));
    }

    std::vector<AttributionRule> rules;
    AssignmentDirectory directory;

    std::size_t below(std::size_t bound) { return m_random() % bound; }

    FreeSegment work(Instant start, Seconds length, std::size_t document)
    {
        const auto application = numbered("org.example.Application", below(40));
        ActivitySegment segment{.id = SegmentID::random(), .start = start, .end = start + length};
        segment.application = ApplicationIdentity{application, application};
        segment.context = FocusedContext::windowTitle(numbered("Überblick ", document)
                                                      + " — a document with a name of usual length");
        if (below(3) == 0)
            segment.browserDomain =
                BrowserDomain::fromText("www." + numbered("site", below(100)) + ".example.org");
        segment.evidence = ContextEvidence::applicationAndWindow;
        segment.timeZone = {"Europe/Berlin", 7200};
        return {segment, segment.id};
    }

private:
    static std::string numbered(const char* name, std::size_t number)
    {
        return name + std::to_string(number);
    }

    RuleMatch match(int i)
    {
        RuleMatch match;
        if (i % 3 == 0)
            match.applicationBundleIdentifier = numbered("org.example.Application", below(40));
        if (i % 3 == 1)
            match.browserDomain = BrowserDomain::fromText(numbered("site", below(100)) + ".example.org");
        if (match.isEmpty() || below(2) == 0)
            match.titleContains = numbered("Überblick ", below(1000));
        return match;
    }

    std::mt19937 m_random{1};
};

} // namespace stintbook
