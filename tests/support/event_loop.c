/* SPDX-License-Identifier: MIT */
/* Preloaded into the daemon: notes the threads whose event loop is GLib's, and keeps GLib's in use where a test wants
 * it.
 *
 *   EVENT_LOOP_NOTES=FILE   gets a line for each thread that waits in GLib's loop
 *   EVENT_LOOP_GLIB=1       QT_NO_GLIB can't be set any more
 *
 * Needs the C library alone, so that it can come before the sanitizers. */
#include <dlfcn.h>
#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int (*set_variable)(const char*, const char*, int);
static int (*iterate)(void*, int);
static __thread int noted;

__attribute__((constructor)) static void find_originals(void)
{
    *(void**)&set_variable = dlsym(RTLD_NEXT, "setenv");
    *(void**)&iterate = dlsym(RTLD_NEXT, "g_main_context_iteration");
}

static void note(void)
{
    static const char line[] = "GLib\n";
    const char* file = getenv("EVENT_LOOP_NOTES");
    if (noted || file == NULL)
        return;
    noted = 1;
    const int notes = open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (notes < 0 || write(notes, line, sizeof line - 1) != (ssize_t)(sizeof line - 1))
        abort();
    close(notes);
}

int setenv(const char* name, const char* value, int replace)
{
    if (strcmp(name, "QT_NO_GLIB") == 0 && getenv("EVENT_LOOP_GLIB") != NULL)
        return 0;
    return set_variable(name, value, replace);
}

int g_main_context_iteration(void* context, int may_block);
int g_main_context_iteration(void* context, int may_block)
{
    note();
    return iterate(context, may_block);
}
