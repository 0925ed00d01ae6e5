/* SPDX-License-Identifier: MIT */
/* Preloaded into the daemon: notes its calls of the system log in the file that CAUGHT_SYSLOG names, a line each:
 *
 *     openlog haldend 43 144
 *     3 Error starting haldend.
 */
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <syslog.h>

static void note(const char* format, ...)
{
    const char* path = getenv("CAUGHT_SYSLOG");
    FILE* file = path != NULL ? fopen(path, "a") : NULL;
    if (file == NULL)
        return;
    va_list arguments;
    va_start(arguments, format);
    vfprintf(file, format, arguments);
    va_end(arguments);
    fclose(file);
}

void openlog(const char* ident, int option, int facility)
{
    note("openlog %s %d %d\n", ident, option, facility);
}

static void note_message(int priority, const char* format, va_list arguments)
{
    char* text = NULL;
    if (vasprintf(&text, format, arguments) < 0)
        return;
    note("%d %s\n", priority, text);
    free(text);
}

void syslog(int __pri, const char* __fmt, ...)
{
    va_list arguments;
    va_start(arguments, __fmt);
    note_message(__pri, __fmt, arguments);
    va_end(arguments);
}

/* The same in an optimised build. */
void __syslog_chk(int priority, int flag, const char* format, ...);
void __syslog_chk(int priority, int flag, const char* format, ...)
{
    (void)flag;
    va_list arguments;
    va_start(arguments, format);
    note_message(priority, format, arguments);
    va_end(arguments);
}
