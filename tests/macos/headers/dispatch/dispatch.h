#pragma once

typedef struct dispatch_queue_s* dispatch_queue_t; // an object in Objective-C; only handed on here
typedef void (^dispatch_block_t)(void);
extern "C" dispatch_queue_t dispatch_get_main_queue(void);
extern "C" void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
