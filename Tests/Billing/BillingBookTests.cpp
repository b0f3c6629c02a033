#include <gtest/gtest.h>

#include "Billing/BillingBook.h"
#include "Billing/FirstWorkContextRepository.h"

namespace stintbook {

namespace {

using enum RoundingPolicy;

const auto client = ClientID::random();
const auto project = ProjectID::random();

TEST(BillingBook, TakesEachTermFromTheProjectThenTheClientThenTheLedger)
{
    BillingBook book;
    EXPECT_EQ(book.resolve(client, project), BillingBook::Terms());

    book.settings.defaultRounding = upToNextSixMinutes;
    EXPECT_EQ(book.resolve(client, project), (BillingBook::Terms{{}, upToNextSixMinutes}));

    book.clients[client] = {.hourlyRate = Decimal(90), .rounding = nearestFifteenMinutes};
    EXPECT_EQ(book.resolve(client, project), (BillingBook::Terms{Decimal(90), nearestFifteenMinutes}));
    EXPECT_EQ(book.resolve(ClientID::random(), project), (BillingBook::Terms{{}, upToNextSixMinutes}));

    book.projects[project] = {.hourlyRate = Decimal(0)};
    EXPECT_EQ(book.resolve(client, project), (BillingBook::Terms{Decimal(0), nearestFifteenMinutes}));

    book.projects[project] = {.rounding = exact};
    EXPECT_EQ(book.resolve(client, project), (BillingBook::Terms{Decimal(90), exact}));
}

TEST(FirstWorkContextProblem, SaysThatNothingWasCreated)
{
    using Kind = FirstWorkContextProblem::Kind;
    EXPECT_EQ(message(FirstWorkContextProblem{Kind::unwritableValue, "hourly rate"}),
              "The hourly rate could not be stored, so nothing was created. Check it and try again.");
    EXPECT_EQ(message(FirstWorkContextProblem{Kind::projectNotOwnedByNewClient, {}}),
              "The project does not belong to the client being created, so nothing was created.");
}

} // namespace

} // namespace stintbook
