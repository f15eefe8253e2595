#pragma once

#include "fuzz/FuzzText.h"

// What other processes send, and may send otherwise than agreed. Each ends the process where
// something is wrong.
namespace zarvy::fuzz {

// The opcode of XInput and the id of the keyboard; then recorded messages, each behind two bytes: a
// request for an odd one, else a reply, and how long it is. What is made of them is what their
// bytes say one by one.
void grabProtocol(Bytes bytes);

// What a script worker sends. The program comes to an end with it, and takes nothing over that is
// not agreed.
void scriptWire(Bytes bytes);

// A reply: how many times the worker asks for the clocks first, what it is, and behind 0x1E its
// text and what was thrown. It comes across as it was sent.
void scriptReply(Bytes bytes);

// What ibus and fcitx5 say of themselves.
void inputMethods(Bytes bytes);

// What is learned of fields that get the keyboard, one byte a time.
void fieldSecrecy(Bytes bytes);

}  // namespace zarvy::fuzz
