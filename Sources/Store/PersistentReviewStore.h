#pragma once

#include <memory>

#include "Billing/FirstWorkContextRepository.h"
#include "Domain/ClientDirectoryRepository.h"
#include "Export/BillingRepository.h"
#include "Review/ReviewedRecordRepository.h"
#include "Rules/AttributionRuleRepository.h"
#include "Store/StoreDatabase.h"

namespace stintbook {

/// Everything that the user makes or decides: reviews, clients, rules, billing, exports.
///
/// Confined to one executor; it may share its database with a `PersistentActivitySegmentRepository` on another
/// one, as every call is one transaction of its own.
class PersistentReviewStore final : public ReviewedRecordRepository,
                                    public SegmentReviewRepository,
                                    public ClientDirectoryRepository,
                                    public AttributionRuleRepository,
                                    public BillingRepository,
                                    public FirstWorkContextRepository {
public:
    explicit PersistentReviewStore(std::shared_ptr<StoreDatabase> database)
        : m_database(std::move(database))
    {
    }

    Stored<std::vector<ReviewedWorkItem>> items(const LocalDay& day) const override;
    Stored<std::vector<ReviewedWorkItem>> items(Interval overlapping) const override;
    Stored<std::optional<ReviewedDayApproval>> approval(const LocalDay& day) const override;
    Stored<std::vector<LocalDay>> reviewedDays(std::optional<Interval> startingIn) const override;
    /// The time that items cover follows from their slices: `consumedSegmentIDs` leaves no record.
    Stored<void> apply(const ReviewedLayerMutation& mutation) override;

    Stored<SegmentReviews> reviews(std::span<const SegmentID> segments) const override;
    Stored<SegmentReviews> reviews(Interval overlapping) const override;
    Stored<void> saveReviews(const std::map<SegmentID, SegmentReview>& reviews) override;

    Stored<std::vector<Client>> clients() const override;
    Stored<std::vector<Project>> projects() const override;
    Stored<ClientReferenceCensus> referenceCensus() const override;
    std::expected<void, ClientEditError> saveClient(const Client& client) override;
    std::expected<void, ClientEditError> saveProject(const Project& project) override;
    std::expected<void, ClientEditError> deleteClient(ClientID client) override;
    std::expected<void, ClientEditError> deleteProject(ProjectID project) override;

    Stored<std::vector<AttributionRule>> attributionRules() const override;
    Stored<std::vector<ExclusionRule>> exclusionRules() const override;
    Stored<void> replaceAttributionRules(const std::vector<AttributionRule>& rules) override;
    Stored<void> replaceExclusionRules(const std::vector<ExclusionRule>& rules) override;

    Stored<BillingBook> billing() const override;
    Stored<void> saveSettings(const BillingSettings& settings) override;
    Stored<bool> suggestCurrency(const BillingCurrency& currency) override;
    Stored<void> saveClientBilling(ClientID client, const ClientBillingDefaults& defaults) override;
    Stored<void> saveProjectBilling(ProjectID project, const ProjectBillingOverrides& overrides) override;
    std::expected<void, std::variant<UnreadableRecord, StoreFailure, ExportStoreProblem>> append(
        const ExportSnapshot& snapshot) override;
    Stored<std::vector<ExportSnapshot>> snapshots() const override;
    Stored<std::optional<ExportSnapshot>> snapshot(ExportSnapshotID id) const override;
    Stored<std::vector<ExportedDay>> exportedDays() const override;
    Stored<std::optional<ReviewedDayRevision>> exportedRevision(const LocalDay& day) const override;

    std::expected<void, std::variant<UnreadableRecord, StoreFailure, FirstWorkContextProblem>> create(
        const FirstWorkContext& context) override;

private:
    std::shared_ptr<StoreDatabase> m_database;
};

} // namespace stintbook
