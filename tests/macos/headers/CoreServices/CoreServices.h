// Declared after the public documentation of Core Services; only what the companion uses. Each declaration says which
// one it stands for.
#pragma once

typedef unsigned int FourCharCode; // FourCharCode (UInt32)
typedef FourCharCode AEEventClass; // AEEventClass
typedef FourCharCode AEEventID;    // AEEventID

enum : AEEventClass { kCoreEventClass = 0x61657674 };   // kCoreEventClass, 'aevt'
enum : AEEventID { kAEReopenApplication = 0x72617070 }; // kAEReopenApplication, 'rapp'
