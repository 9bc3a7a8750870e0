
#include <stdlib.h>
#include "vexlib.h"
#include "tornem.h"
#include <stdio.h>
void OnShutdown(){} /* this function is inserted here for compilation purposes it is not used by this version of the client */

/* Global Variables */


int x;



/* Global Function Prototypes */
void Main(int n);
/* Global Functions */
void Main(int n)
{
    n++;
}



/* Event Code */
void OnError()
{
}

void OnFrame()
{
}

void OnKey()
{
}

void OnStart()
{
}

void OnStop()
{
}

void OnTimer()
{
}

void OnTrigger()
{
}

void OnSerial()
{
}

void OnMsg()
{
}

int main(int argc, char *argv[]) 
{
initialize(argc,argv);
EventLoop();
return 0;
}
