#pragma once

typedef unsigned int AEEventClass;
typedef unsigned int AEEventID;
enum : AEEventClass { kCoreEventClass = 0x61657674 };   // 'aevt'
enum : AEEventID { kAEReopenApplication = 0x72617070 }; // 'rapp'
