// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "csv.h"

#include "model/datetext.h"
#include "model/folder.h"

namespace Csv {

static QByteArray field(const QString &value)
{
    QByteArray utf8 = value.toUtf8();
    const bool special =
        utf8.contains('"') || utf8.contains(',') || utf8.contains('\r') || utf8.contains('\n');
    return special ? '"' + utf8.replace('"', "\"\"") + '"' : utf8;
}

void print(const QList<StoredMessage> &messages, StandardOutput &output)
{
    output.write("id,folder,number,time,read,body\r\n");
    for (const StoredMessage &message : messages) {
        output.write(QByteArray::number(message.id) + ',' + field(Folder::name(message.folder))
                     + ',' + field(message.number) + ',' + field(DateText::write(message.time))
                     + ',' + (message.isRead ? "true" : "false") + ',' + field(message.body)
                     + "\r\n");
    }
}

} // namespace Csv
