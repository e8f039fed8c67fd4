// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "results.h"

#include "formats/jsonline.h"
#include "process/diagnostics.h"
#include "shared/terminaltext.h"
#include "shared/text.h"

static const char *nameOf(ItemResult::Status status)
{
    switch (status) {
    case ItemResult::Added:
        return "added";
    case ItemResult::Present:
        return "present";
    case ItemResult::Missing:
        return "missing";
    case ItemResult::Changed:
        return "changed";
    case ItemResult::Unchanged:
        return "unchanged";
    case ItemResult::Deleted:
        return "deleted";
    case ItemResult::Refused:
        return "refused";
    case ItemResult::Failed:
        return "failed";
    }
    Q_UNREACHABLE();
}

static bool isNotDone(ItemResult::Status status)
{
    return status == ItemResult::Missing || status == ItemResult::Refused
        || status == ItemResult::Failed;
}

static QByteArray jsonOf(const ItemResult &result)
{
    JsonLine json;
    json.add("ref", result.ref)
        .addUnlessEmpty("src", result.source)
        .add("status", QLatin1String(nameOf(result.status)));
    if (result.id != -1)
        json.add("id", result.id);
    return json.addUnlessEmpty("code", codeOf(result.rejectReason))
        .addUnlessEmpty("detail", result.reason().english)
        .line();
}

static QString textOf(const ItemResult &result, const QString &status)
{
    QStringList words{status};
    if (result.id != -1)
        words += QString::number(result.id);
    if (!result.source.isEmpty())
        words += terminalText(result.source);
    if (result.rejectReason != RejectReason::None)
        words += codeOf(result.rejectReason) + QLatin1String(": ")
            + terminalText(result.reason().translated);
    return words.join(QLatin1String("  "));
}

Results::Results(StandardOutput &output, ItemResult::Status done, bool asJson, bool isForetold)
    : m_output(output)
    , m_done(done)
    , m_asJson(asJson)
    , m_isForetold(isForetold)
{
}

QString Results::wordFor(ItemResult::Status status) const
{
    if (m_isForetold && status == ItemResult::Deleted)
        return QStringLiteral("would delete");
    return QLatin1String(nameOf(status));
}

//! How many of a status there are, for people.
QString Results::sumOf(ItemResult::Status status) const
{
    const int count = total(status);
    switch (status) {
    case ItemResult::Added:
        return Text::tr("%n added", nullptr, count);
    case ItemResult::Present:
        return Text::tr("%n present", nullptr, count);
    case ItemResult::Missing:
        return Text::tr("%n missing", nullptr, count);
    case ItemResult::Changed:
        return Text::tr("%n changed", nullptr, count);
    case ItemResult::Unchanged:
        return Text::tr("%n unchanged", nullptr, count);
    case ItemResult::Deleted:
        return m_isForetold ? Text::tr("%n would delete", nullptr, count)
                            : Text::tr("%n deleted", nullptr, count);
    case ItemResult::Refused:
        return Text::tr("%n refused", nullptr, count);
    case ItemResult::Failed:
        return Text::tr("%n failed", nullptr, count);
    }
    Q_UNREACHABLE();
}

void Results::note(const ItemResult &result)
{
    ++m_read;
    ++m_totals[result.status];
    if (result.rejectReason != RejectReason::None)
        ++m_refusals[result.rejectReason];
}

void Results::report(const ItemResult &result)
{
    note(result);
    if (m_asJson)
        m_output.write(jsonOf(result));
    else
        m_output.writeLine(textOf(result, wordFor(result.status)),
                           isNotDone(result.status) ? StandardOutput::Red : StandardOutput::Plain);
}

void Results::notePassedOver(const QStringList &paths)
{
    m_passedOver += int(paths.size());
    for (const QString &path : paths)
        Diagnostics::warn(Text::tr("passed over: %1").arg(terminalText(path)));
}

void Results::printSummary(bool isWhole)
{
    QList<ItemResult::Status> shown{m_done};
    if (m_done == ItemResult::Added)
        shown += ItemResult::Present;
    if (m_done == ItemResult::Present)
        shown += ItemResult::Missing;
    if (total(ItemResult::Unchanged) > 0)
        shown += ItemResult::Unchanged;
    shown << ItemResult::Refused << ItemResult::Failed;
    JsonLine sums;
    sums.add("read", m_read);
    QStringList words{Text::tr("%n read", nullptr, m_read)};
    for (const ItemResult::Status status : shown) {
        sums.add(nameOf(status), total(status));
        words += sumOf(status);
    }
    if (m_passedOver > 0) {
        sums.add("passed over", m_passedOver);
        words += Text::tr("%n passed over", nullptr, m_passedOver);
    }
    if (!isWhole)
        sums.addBool("complete", false);
    if (m_asJson)
        m_output.write(JsonLine().add("summary", sums).line());
    else
        m_output.write(words.join(QLatin1String(", ")).toUtf8() + '\n');
}

void Results::warnOfRefusals() const
{
    for (auto it = m_refusals.cbegin(); it != m_refusals.cend(); ++it) {
        Diagnostics::warn(
            Text::tr("%1 not done (%2): %3")
                .arg(QString::number(it.value()), codeOf(it.key()), reasonOf(it.key()).translated));
    }
}

ExitCode Results::exitCode() const
{
    const int unknownIds = m_refusals.value(RejectReason::SmsBadId);
    if (total(ItemResult::Missing) + total(ItemResult::Refused) + total(ItemResult::Failed)
        > unknownIds)
        return SomeNotDone;
    return unknownIds > 0 ? IdNotFound : AllDone;
}
