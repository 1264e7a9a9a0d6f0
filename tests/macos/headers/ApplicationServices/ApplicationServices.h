// Declared after the public documentation of ApplicationServices; only what the companion uses.
#pragma once

typedef unsigned char Boolean; // Boolean (Core Foundation and MacTypes)

extern "C" Boolean AXIsProcessTrusted(void); // AXIsProcessTrusted()
