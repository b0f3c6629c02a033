#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Domain/AssignmentDirectory.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AssignmentDirectoryTest : public testing::Test {
protected:
    Client active{.id = ClientID::random(), .name = "Active"};
    Client archived{.id = ClientID::random(), .name = "Archived", .isArchived = true};
    Project open{.id = ProjectID::random(), .clientID = active.id, .name = "Open"};
    Project closed{.id = ProjectID::random(), .clientID = active.id, .name = "Closed", .isArchived = true};
    Project buried{.id = ProjectID::random(), .clientID = archived.id, .name = "Buried", .isArchived = true};

    AssignmentDirectory directory{{archived, active}, {open, closed, buried}};
};

TEST_F(AssignmentDirectoryTest, NamesTheFirstReasonAgainstATarget)
{
    using enum AssignmentTargetProblem;
    EXPECT_EQ(directory.problem(active.id, open.id), std::nullopt);
    EXPECT_EQ(directory.problem(ClientID::random(), ProjectID::random()), clientMissing);
    EXPECT_EQ(directory.problem(archived.id, ProjectID::random()), projectMissing);
    EXPECT_EQ(directory.problem(archived.id, buried.id), clientArchived);
    EXPECT_EQ(directory.problem(active.id, buried.id), projectArchived);

    Client other{.id = ClientID::random(), .name = "Other"};
    EXPECT_EQ(AssignmentDirectory({active, other}, {open}).problem(other.id, open.id),
              projectBelongsToAnotherClient);
}

TEST_F(AssignmentDirectoryTest, OffersTheArchivedChoiceLastAndOnce)
{
    EXPECT_THAT(directory.selectableClients(std::nullopt), ElementsAre(active));
    EXPECT_THAT(directory.selectableClients(active.id), ElementsAre(active));
    EXPECT_THAT(directory.selectableClients(archived.id), ElementsAre(active, archived));
    EXPECT_THAT(directory.selectableClients(ClientID::random()), ElementsAre(active));

    EXPECT_THAT(directory.selectableProjects(active.id, std::nullopt), ElementsAre(open));
    EXPECT_THAT(directory.selectableProjects(active.id, closed.id), ElementsAre(open, closed));
    EXPECT_THAT(directory.selectableProjects(active.id, buried.id), ElementsAre(open)) << "another client's";
    EXPECT_THAT(directory.selectableProjects(archived.id, std::nullopt), IsEmpty());
}

TEST_F(AssignmentDirectoryTest, CountsTheFirstOfTwoEntriesWithOneIdentifier)
{
    Client twin = active;
    twin.name = "Twin";
    twin.isArchived = true;
    const AssignmentDirectory doubled({active, twin}, {open});
    EXPECT_EQ(doubled.client(active.id)->name, "Active");
    EXPECT_EQ(doubled.problem(active.id, open.id), std::nullopt);
}

} // namespace
} // namespace stintbook
