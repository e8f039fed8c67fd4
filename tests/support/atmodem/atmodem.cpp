// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "atmodem.h"

#include <QtCore/QTimer>

namespace {

constexpr char EndOfPdu = 0x1a;

struct Answer
{
    const char *command; //!< how the command begins, behind "AT"
    const char *reply;   //!< the line before OK
};

//! What the daemons want to know before they send. To all else the answer is OK.
const Answer Answers[] = {
    {"+CIMI", "001010000000001"},
    {"+CSMS", "+CSMS: 1,1,1"},
    {"+CMGF=?", "+CMGF: (0)"},
    {"+CPMS=?", "+CPMS: (\"ME\",\"SM\"),(\"ME\",\"SM\"),(\"ME\",\"SM\")"},
    {"+CNMI=?", "+CNMI: (0-2),(0-3),(0,2),(0-2),(0,1)"},
    {"+CREG=?", "+CREG: (0-2)"},
    // The card's own number, without which ModemManager waits three seconds for it.
    {"+CRSM=176,12258", "+CRSM: 144,0,\"981000000000000000F0\""},
};

} // namespace

void AtModem::connectTo(QIODevice *line)
{
    closeLine();
    m_line = line;
    m_buffer.clear();
    m_isInPdu = false;
    connect(line, &QIODevice::readyRead, this, &AtModem::read);
}

void AtModem::closeLine()
{
    if (!m_line)
        return;
    disconnect(m_line, nullptr, this, nullptr);
    m_line->close();
    m_line->deleteLater();
    m_line = nullptr;
}

void AtModem::obey(const QByteArray &order)
{
    if (order == "ready" || order == "ask-pin" || order == "no-sim") {
        m_sim = order;
    } else if (order == "home" || order == "away") {
        m_isRegistered = order == "home";
        write(m_isRegistered ? "+CREG: 1\r\n" : "+CREG: 0\r\n");
        write(m_isRegistered ? "+CGREG: 1\r\n" : "+CGREG: 0\r\n");
    } else if (order.startsWith("delay ")) {
        m_behaviour = "accept";
        m_delay = order.mid(6).toInt();
    } else {
        m_behaviour = order;
        m_delay = 0;
    }
}

void AtModem::write(const QByteArray &text)
{
    if (m_line)
        m_line->write("\r\n" + text);
}

void AtModem::read()
{
    m_buffer += m_line->readAll();
    while (m_line) {
        const char end = m_isInPdu ? EndOfPdu : '\r';
        const auto size = m_buffer.indexOf(end);
        if (m_isInPdu && m_behaviour == "hang-up" && !m_buffer.isEmpty()) {
            Q_EMIT submitted();
            return closeLine();
        }
        if (size < 0)
            return;
        const QByteArray text = m_buffer.left(size).trimmed();
        m_buffer.remove(0, size + 1);
        if (m_isInPdu)
            takePdu(text);
        else if (text.startsWith("AT"))
            answer(text.mid(2));
    }
}

void AtModem::answer(const QByteArray &command)
{
    if (command.startsWith("+CMGS=")) {
        m_announcedSize = command.mid(6).toInt();
        m_isInPdu = true;
        write("> ");
        return;
    }
    if (m_sim == "no-sim" && (command.startsWith("+CPIN") || command.startsWith("+CIMI")))
        return write("+CME ERROR: 10\r\n");
    const QByteArray line = reply(command);
    if (!line.isEmpty())
        write(line + "\r\n");
    write("OK\r\n");
}

QByteArray AtModem::reply(const QByteArray &command) const
{
    if (command == "+CPIN?")
        return m_sim == "ready" ? "+CPIN: READY" : "+CPIN: SIM PIN";
    if (command == "+SIMSTATE?") // whether there is a card; oFono's simulation plugin asks so
        return m_sim == "no-sim" ? "+SIMSTATE: 0" : "+SIMSTATE: 1";
    if (command == "+CREG?")
        return m_isRegistered ? "+CREG: 1,1" : "+CREG: 1,0";
    if (command == "+CGREG?")
        return m_isRegistered ? "+CGREG: 1,1" : "+CGREG: 1,0";
    for (const Answer &answer : Answers) {
        if (command.startsWith(answer.command))
            return answer.reply;
    }
    return QByteArray();
}

void AtModem::takePdu(const QByteArray &hex)
{
    m_isInPdu = false;
    Q_EMIT submitted();
    if (m_behaviour == "ignore")
        return;
    const QByteArray bytes = QByteArray::fromHex(hex);
    const int centreSize = bytes.isEmpty() ? 0 : 1 + uchar(bytes.at(0));
    const auto pdu = decodeSubmitPdu(bytes.mid(centreSize));
    if (m_behaviour == "refuse")
        return write("+CMS ERROR: 21\r\n"); // "short message transfer rejected"
    if (!pdu || bytes.size() - centreSize != m_announcedSize)
        return write("+CMS ERROR: 304\r\n"); // "invalid PDU mode parameter"
    collect(*pdu);
    QTimer::singleShot(m_delay, Qt::PreciseTimer, this, [this] {
        write("+CMGS: " + QByteArray::number(++m_messageReference % 256) + "\r\n");
        write("OK\r\n");
    });
}

void AtModem::collect(const SubmitPdu &pdu)
{
    const Recipient recipient(pdu.number, pdu.reference);
    QMap<int, QString> &parts = m_parts[recipient];
    parts.insert(pdu.part, pdu.text);
    if (parts.size() < pdu.partCount)
        return;
    QString text;
    for (const QString &part : std::as_const(parts))
        text += part;
    m_parts.remove(recipient);
    Q_EMIT received(pdu.number, text);
}
