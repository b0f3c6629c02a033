#include "Screens/Review/ReviewEdits.h"

#include <array>
#include <utility>

#include "App/ClientBook.h"
#include "App/EarlierDescriptions.h"
#include "Base/Try.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

using Outcome = ReviewModel::EditOutcome;

std::vector<UUID> identifiers(const EditedWork& work)
{
    std::vector<UUID> ids;
    for (const auto& block : work.blocks)
        ids.push_back(block.id);
    for (const auto& item : work.items)
        ids.push_back(item.id.uuid);
    return ids;
}

std::vector<UUID> identifiers(const std::vector<ReviewedWorkItem>& items)
{
    std::vector<UUID> ids;
    for (const auto& item : items)
        ids.push_back(item.id.uuid);
    return ids;
}

template <typename T> Outcome outcome(const DayEdited<T>& result)
{
    if (!result)
        return {.problem = message(result.error()), .work = {}, .day = {}};
    return {.problem = {}, .work = identifiers(*result), .day = {}};
}

/// Of an edit that was taken back or done again, perhaps on another day.
Outcome repeated(const DayEdited<DayEdit>& result)
{
    if (!result)
        return {.problem = message(result.error()), .work = {}, .day = {}};
    return {.problem = {}, .work = {}, .day = result->day};
}

std::optional<bool> billability(int state)
{
    return state == Qt::PartiallyChecked ? std::nullopt : std::optional(state == Qt::Checked);
}

std::optional<WorkTarget> target(const QString& clientID, const QString& projectID, int billable)
{
    const auto client = UUID::parse(clientID.toStdString());
    const auto project = UUID::parse(projectID.toStdString());
    if (!client || !project)
        return std::nullopt;
    return WorkTarget{{*client}, {*project}, billability(billable)};
}

auto splitting(double secondOfDay)
{
    return [secondOfDay](DayBook& book, const LocalDay& day, const std::vector<UUID>& ids) {
        return book.split(day, ids.front(), day.start + Seconds{secondOfDay});
    };
}

std::optional<std::string> described(const QString& words)
{
    const auto trimmed = words.trimmed();
    return trimmed.isEmpty() ? std::nullopt : std::optional(trimmed.toStdString());
}

} // namespace

ReviewEdits::ReviewEdits(ReviewModel& review, QObject* parent)
    : QObject(parent)
    , m_review(review)
{
}

template <typename Work> std::optional<ReviewModel::Edit> ReviewEdits::onSelected(Work work) const
{
    auto ids = m_review.selectedSubjects();
    if (ids.empty())
        return std::nullopt;
    return [ids = std::move(ids), work = std::move(work)](StoreDesk::Workplace&, DayBook& book,
                                                          const LocalDay& day) {
        return outcome(work(book, day, ids));
    };
}

template <typename Work> void ReviewEdits::editSelected(Work work)
{
    if (auto edit = onSelected(std::move(work)))
        m_review.edit(*std::move(edit));
}

void ReviewEdits::editBySheet(ReviewModel::Edit edit)
{
    m_review.edit(std::move(edit), [this](const QString& problem) {
        if (problem.isEmpty())
            Q_EMIT accepted();
        else
            Q_EMIT refused(problem);
    });
}

void ReviewEdits::assign(const QString& clientID, const QString& projectID, int billable)
{
    if (const auto chosen = target(clientID, projectID, billable)) {
        editSelected([chosen = *chosen](DayBook& book, const LocalDay& day, const std::vector<UUID>& ids) {
            return book.assign(day, ids, chosen);
        });
    }
}

void ReviewEdits::setBillable(bool isBillable)
{
    const auto inspected = m_review.inspected();
    assign(inspected.value(QStringLiteral("clientID")).toString(),
           inspected.value(QStringLiteral("projectID")).toString(), isBillable ? Qt::Checked : Qt::Unchecked);
}

void ReviewEdits::confirm()
{
    editSelected([](DayBook& book, const LocalDay& day, const std::vector<UUID>& ids) {
        return book.confirm(day, ids);
    });
}

void ReviewEdits::ignore()
{
    editSelected([](DayBook& book, const LocalDay& day, const std::vector<UUID>& ids) {
        return book.ignore(day, ids);
    });
}

void ReviewEdits::restore()
{
    editSelected([](DayBook& book, const LocalDay& day, const std::vector<UUID>& ids) {
        return book.restore(day, ids);
    });
}

void ReviewEdits::describe(const QString& words)
{
    editSelected([words = words.trimmed().toStdString()](DayBook& book, const LocalDay& day,
                                                         const std::vector<UUID>& ids) {
        return book.describe(day, ids.front(), words);
    });
}

void ReviewEdits::splitAt(double secondOfDay)
{
    editSelected(splitting(secondOfDay));
}

void ReviewEdits::splitBySheet(double secondOfDay)
{
    if (auto edit = onSelected(splitting(secondOfDay)))
        editBySheet(*std::move(edit));
}

void ReviewEdits::merge()
{
    auto ids = m_review.selectedSubjects();
    const auto& view = m_review.view();
    if (view == nullptr || ids.empty())
        return;
    if (ids.size() == 1) {
        const auto& rows = view->subjects;
        const auto row =
            std::ranges::find(rows, ids.front(), [](const SubjectRow& one) { return one.subjects.front(); });
        if (row != rows.end() && row + 1 != rows.end())
            ids.push_back((row + 1)->subjects.front());
    }
    m_review.edit([ids](StoreDesk::Workplace&, DayBook& book, const LocalDay& day) {
        return outcome(book.merge(day, ids));
    });
}

void ReviewEdits::markReady()
{
    m_review.edit([now = m_review.context().clock.now()](StoreDesk::Workplace&, DayBook& book,
                                                         const LocalDay& day) -> Outcome {
        const auto approved = book.markReady(day, now);
        if (!approved)
            return {.problem = message(approved.error()), .work = {}, .day = {}};
        return {.problem = {}, .work = {}, .day = day};
    });
}

void ReviewEdits::undo()
{
    m_review.edit(
        [](StoreDesk::Workplace&, DayBook& book, const LocalDay&) { return repeated(book.undo()); });
}

void ReviewEdits::redo()
{
    m_review.edit(
        [](StoreDesk::Workplace&, DayBook& book, const LocalDay&) { return repeated(book.redo()); });
}

void ReviewEdits::addWork(double start, double end, const QString& clientID, const QString& projectID,
                          int billable, const QString& description)
{
    const auto chosen = target(clientID, projectID, billable);
    if (!chosen) {
        Q_EMIT refused(tr("Choose a client and a project first."));
        return;
    }
    editBySheet([start, end, chosen = *chosen,
                 words = described(description)](StoreDesk::Workplace&, DayBook& book, const LocalDay& day) {
        return outcome(book.add(day, {day.start + Seconds{start}, day.start + Seconds{end}}, chosen, words));
    });
}

void ReviewEdits::convertIdle(const QString& clientID, const QString& projectID, int billable,
                              const QString& description)
{
    const auto idle = UUID::parse(m_review.current().toStdString());
    const auto chosen = target(clientID, projectID, billable);
    if (!idle || !chosen) {
        Q_EMIT refused(tr("Choose a client and a project first."));
        return;
    }
    editBySheet([idle = SegmentID{*idle}, chosen = *chosen,
                 words = described(description)](StoreDesk::Workplace&, DayBook& book, const LocalDay& day) {
        return outcome(book.convertIdle(day, idle, chosen, words));
    });
}

void ReviewEdits::createTarget(const QString& clientID, const QString& clientName, const QString& projectName)
{
    using Created = ClientEdited<NewTarget>;
    m_review.context().desk.ask(
        this,
        [id = UUID::parse(clientID.toStdString()), client = clientName.toStdString(),
         project = projectName.toStdString()](StoreDesk::Workplace& place) -> Created {
            ClientBook book(place.store);
            if (!id)
                return book.addClientWithProject(
                    {.name = client, .color = {}, .rate = {}, .rounding = {}},
                    {.clientID = {}, .name = project, .rate = {}, .rounding = {}});
            const ClientID itsClient{*id};
            const auto added =
                TRY(book.addProject({.clientID = itsClient, .name = project, .rate = {}, .rounding = {}}));
            return NewTarget{itsClient, added};
        },
        [this](const Created& created) {
            if (!created) {
                Q_EMIT targetRefused(text(message(created.error())));
                return;
            }
            m_review.refresh();
            Q_EMIT targetCreated(text(created->clientID.uuid), text(created->projectID.uuid));
        },
        [this](const std::string& problem) { Q_EMIT targetRefused(text(problem)); });
}

void ReviewEdits::readDescriptions()
{
    m_review.context().desk.ask(
        this,
        [now = m_review.context().clock.now()](StoreDesk::Workplace& place) {
            return earlierDescriptions(place.store, now);
        },
        [this](const Stored<std::vector<std::string>>& earlier) {
            m_descriptions.clear();
            if (earlier) {
                for (const auto& words : *earlier)
                    m_descriptions.append(text(words));
            }
            Q_EMIT descriptionsChanged();
        },
        [](const std::string&) {});
}

} // namespace stintbook
