// A process of the launcher's kind to be killed: starts PROGRAM ARGUMENTS... and then only waits.

#include "platform/linux/launching/DetachedProcess.h"

#include <unistd.h>

int main(int count, char **arguments)
{
    quillbay::platform::DetachedProcess process;
    for (int i = 1; i < count; ++i)
        process.arguments.append(arguments[i]);
    process.program = process.arguments.value(0);
    process.workingDirectory = "/";
    if (quillbay::platform::startDetached(process).pid <= 0)
        return 1;
    alarm(60);
    for (;;)
        pause();
}
