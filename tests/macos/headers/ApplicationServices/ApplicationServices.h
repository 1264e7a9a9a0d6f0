#pragma once

extern "C" unsigned char AXIsProcessTrusted(void);
