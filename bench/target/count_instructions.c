/* SPDX-License-Identifier: MIT */
/* A plugin of the emulator: adds up the instructions of all threads, in the first word of the file that the variable
 * INSTRUCTIONS names, so that others can read it at any time.
 *
 * Debian has no header for plugins; these are the declarations that are needed of version 1 of their interface. */
#include <fcntl.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <unistd.h>

typedef uint64_t qemu_plugin_id_t;
struct qemu_info;
struct qemu_plugin_tb;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t plugin,
                                           void (*translated)(qemu_plugin_id_t, struct qemu_plugin_tb*));
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op operation,
                                              void* word, uint64_t value);

int qemu_plugin_version = 1;
int qemu_plugin_install(qemu_plugin_id_t plugin, const struct qemu_info* info, int count, char** arguments);

static uint64_t* s_instructions;

/* Counts a block whenever it runs. */
static void translated(qemu_plugin_id_t plugin, struct qemu_plugin_tb* block)
{
    (void)plugin;
    qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, s_instructions,
                                             qemu_plugin_tb_n_insns(block));
}

int qemu_plugin_install(qemu_plugin_id_t plugin, const struct qemu_info* info, int count, char** arguments)
{
    (void)info;
    (void)count;
    (void)arguments;
    const char* path = getenv("INSTRUCTIONS");
    int file = path != NULL ? open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0600) : -1;
    if (file < 0 || ftruncate(file, sizeof *s_instructions) != 0)
        return -1;
    s_instructions = mmap(NULL, sizeof *s_instructions, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (s_instructions == MAP_FAILED)
        return -1;
    qemu_plugin_register_vcpu_tb_trans_cb(plugin, translated);
    return 0;
}
