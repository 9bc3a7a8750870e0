/* The handlers that a program block defines, and the two calls of its main function.
 * They are declared here so that a handler whose parameters were changed is a compile error and not a crash. */
#ifndef TORNEM_H
#define TORNEM_H

#include "vexlib.h"

/* Something went wrong on a channel. What the error types mean is up to the hardware of the channel. */
void OnError(uchar channel, uchar error_type);

/* A frame has arrived. It may be changed, and passed to SendFrame; it is gone when the handler returns. */
void OnFrame(DataFrame* frame, uchar channel);

/* A key was pressed. The character is in Windows-1252; those from 0x80 up are negative where char is signed. */
void OnKey(char character);

/* The block was started or stopped. The time is in milliseconds since the origin of time, which is the first time
 * stamp of the script. The timers are stopped after OnStop. */
void OnStart(long time);
void OnStop(long time);

/* A timer has run out, or the script says so: then no timer of that ID needs to be running. */
void OnTimer(uint timerid);

/* The block was triggered. The time is in milliseconds since the origin of time. */
void OnTrigger(long time);

/* Bytes have arrived on the serial port: 1-VEX_SERIAL_LIMIT of them, gone when the handler returns. */
void OnSerial(const void* data, unsigned short datacount);

/* A message has arrived: a text in Windows-1252 with a 0 at its end. The handler may change it within its length. */
void OnMsg(char* string);

/* Part of every program block, and never called. */
void OnShutdown(void);

/* Reads the command line. Does not return when there is nothing to run: --help exits with 0, a wrong option with 64,
 * a script that cannot be opened with 1. */
void initialize(int argc, char* argv[]);

/* Runs the script to its end, calling the handlers. Exits with 1 when the script cannot be read any further or the
 * output cannot be written; a wrong line in the script is only reported. */
void EventLoop(void);

#endif
