// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "androidxml.h"

#include "model/xmltext.h"
#include "process/diagnostics.h"
#include "shared/text.h"

#include <QtCore/QXmlStreamWriter>

namespace AndroidXml {

using namespace KorvaSyncIf;

namespace {

//! An element without children on a line of its own.
class Element
{
public:
    //! \param replaced  counts the characters that XML cannot hold
    Element(const char *name, int &replaced)
        : m_xml(&m_bytes)
        , m_replaced(replaced)
    {
        m_xml.writeEmptyElement(QLatin1String(name));
    }

    Element &add(const char *name, const QString &value)
    {
        m_xml.writeAttribute(QLatin1String(name), XmlText::held(value, &m_replaced));
        return *this;
    }
    Element &add(const char *name, const char *value)
    {
        m_xml.writeAttribute(QLatin1String(name), QLatin1String(value));
        return *this;
    }
    Element &add(const char *name, qint64 value) { return add(name, QString::number(value)); }

    QByteArray line()
    {
        m_xml.writeEndDocument(); // which ends the line, too
        return "  " + m_bytes;
    }

private:
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
    int &m_replaced;
};

const char *typeOfFolder(int folder)
{
    switch (folder) {
    case LocSent:
        return "2";
    case LocDrafts:
        return "3";
    case LocOutbox:
        return "4";
    default: // also the user's own folders: what is in them came in
        return "1";
    }
}

const char *typeOfCall(const Call &call)
{
    return call.type == QLatin1String("incoming") ? "1" : call.isOutgoing() ? "2" : "3";
}

// The phone's word for a value that is absent.
QString nullIfEmpty(const QString &value)
{
    return value.isEmpty() ? QStringLiteral("null") : value;
}

qint64 milliseconds(const QDateTime &time) { return time.isValid() ? time.toMSecsSinceEpoch() : 0; }

// All that readers of such files look for, with the values that say "not known" where the
// store does not tell.
QByteArray element(const StoredMessage &message, int &replaced)
{
    return Element("sms", replaced)
        .add("protocol", "0")
        .add("address", nullIfEmpty(message.number))
        .add("date", milliseconds(message.time))
        .add("type", typeOfFolder(message.folder))
        .add("subject", "null")
        .add("body", message.body)
        .add("toa", "null")
        .add("sc_toa", "null")
        .add("service_center", "null")
        .add("read", message.isRead ? "1" : "0")
        .add("status", "-1")
        .add("locked", "0")
        .add("date_sent", "0")
        .line();
}

QByteArray element(const Call &call, int &replaced)
{
    return Element("call", replaced)
        .add("number", call.number)
        .add("duration", call.duration)
        .add("date", milliseconds(call.start))
        .add("type", typeOfCall(call))
        .add("presentation", call.number.isEmpty() ? "3" : "1") // not known, allowed
        .line();
}

template <typename Item>
void printAll(const char *root, const QList<Item> &items, StandardOutput &output,
              const char *formThatKeepsAll)
{
    int replaced = 0;
    output.write("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n");
    output.write(QByteArray("<") + root + " count=\"" + QByteArray::number(items.size()) + "\">\n");
    for (const Item &item : items)
        output.write(element(item, replaced));
    output.write(QByteArray("</") + root + ">\n");
    if (replaced > 0) {
        Diagnostics::warn(
            Text::tr("%n character(s) that XML cannot hold are replaced by U+FFFD; -o "
                     "%1 keeps them",
                     nullptr, replaced)
                .arg(QLatin1String(formThatKeepsAll)));
    }
}

} // namespace

void print(const QList<StoredMessage> &messages, StandardOutput &output)
{
    printAll("smses", messages, output, "vmsg");
}

void print(const QList<Call> &calls, StandardOutput &output)
{
    printAll("calls", calls, output, "entries");
}

} // namespace AndroidXml
