// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "scriptedstore.h"

#include <QtCore/QMetaObject>
#include <QtCore/QPointer>

namespace {

ScriptedStore *currentStore = nullptr;

} // namespace

ScriptedStore::ScriptedStore()
{
    if (currentStore)
        qFatal("There is a scripted store already");
    currentStore = this;
}

ScriptedStore::~ScriptedStore() { currentStore = nullptr; }

ScriptedStore *ScriptedStore::current()
{
    if (!currentStore)
        qFatal("The library used the platform while no scripted store was there");
    return currentStore;
}

// Models may outlive the store of their test.
void ScriptedStore::record(const QString &call)
{
    if (currentStore)
        currentStore->calls.append(call);
}

QString ScriptedStore::timeText(const QDateTime &time)
{
    return time.isNull() ? QStringLiteral("null") : time.toUTC().toString(Qt::ISODate);
}

void ScriptedStore::react(Request request, const Reaction &reaction)
{
    reactions[request].append(reaction);
}

void ScriptedStore::release() { waiting.takeFirst()(); }

bool ScriptedStore::start(Request request, const QList<int> &requested, QObject *model,
                          const std::function<void(const Report &)> &deliver)
{
    QList<Reaction> &scripted = reactions[request];
    const Reaction reaction =
        scripted.isEmpty() ? Reaction::reporting({{requested, true}}) : scripted.takeFirst();
    const QPointer<QObject> guard(model);
    for (const Report &report : reaction.reports) {
        const auto delivery = [guard, deliver, report] {
            if (guard)
                deliver(report);
        };
        switch (reaction.timing) {
        case Reaction::NextTurn:
            QMetaObject::invokeMethod(model, delivery, Qt::QueuedConnection);
            break;
        case Reaction::AtOnce:
            delivery();
            break;
        case Reaction::WhenReleased:
            waiting.append(delivery);
            break;
        }
    }
    return reaction.taken;
}

QList<int> ScriptedStore::newIds(int &last, int count)
{
    QList<int> ids;
    for (int i = 0; i < count; ++i)
        ids.append(++last);
    return ids;
}
