// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "scriptedparser.h"

class VMessage
{
};

class VMessageParserPrivate
{
};

namespace {

ScriptedParser *script = nullptr;
const VMessage parsedMessage;

} // namespace

ScriptedParser::ScriptedParser() { script = this; }
ScriptedParser::~ScriptedParser() { script = nullptr; }

const VMessage *ScriptedParser::message() const { return &parsedMessage; }

VMessageParser::VMessageParser()
{
    ++script->parsersMade;
    ++script->parsersAlive;
}

VMessageParser::~VMessageParser() { --script->parsersAlive; }

const VMessage *VMessageParser::parseVMessage(const char *data, unsigned int length)
{
    script->inputs.append(QByteArray(data, int(length)));
    return script->parses ? &parsedMessage : nullptr;
}

VMessageProblem VMessageParser::problem() const { return {}; }

const VMessageHeader *VMessageParser::header(const VMessage *) { return script->header; }
const VMessageOriginator *VMessageParser::originator(const VMessage *)
{
    return script->originator;
}
const VMessageRecipient *VMessageParser::recipients(const VMessage *) { return script->recipient; }
const VMessageBody *VMessageParser::body(const VMessage *) { return script->body; }
