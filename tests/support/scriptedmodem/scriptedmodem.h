// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

//! ModemManager, as far as a message needs it, with one modem that is on the network. It lives
//! in the test's own process and answers each message when it is told to, so that a slow modem
//! takes no time.
class ScriptedModem : public QDBusVirtualObject
{
    Q_OBJECT
public:
    struct Message
    {
        QString number;
        QString text;
    };

    //! Stands on the system bus at once.
    explicit ScriptedModem(const QString &busAddress);
    ~ScriptedModem() override;

    //! That were to be sent, in order.
    QList<Message> messages() const { return m_messages; }
    QStringList texts() const;

    //! Accepts all that wait for an answer, and those to come as well when \a always.
    void accept(bool always = false);
    //! Answers the same with an error.
    void refuse(const QString &errorName, const QString &errorText);
    //! What the daemon answers instead of taking any message from now on; without a name it
    //! takes them.
    void refuseToTake(const QString &errorName, const QString &errorText);

    //! What the daemon answers to a method in the stead of what it should.
    void answerInstead(const QString &method, const QVariantList &arguments);

    bool handleMessage(const QDBusMessage &call, const QDBusConnection &bus) override;
    QString introspect(const QString &) const override { return QString(); }

Q_SIGNALS:
    //! A message is to be sent.
    void asked();

private:
    QDBusMessage answerTo(const QDBusMessage &call);

    QDBusConnection m_bus;
    QList<Message> m_created;
    QList<Message> m_messages;
    QList<QDBusMessage> m_unanswered;
    bool m_acceptsAlways = false;
    QString m_errorName;
    QString m_errorText;
    QHash<QString, QVariantList> m_otherAnswers; //!< by method
};
