// A plugin for qemu's user mode: counts the instructions that a program runs and prints their
// number at its end. Of qemu's plugin interface (version 1), for which Debian has no header, it
// declares what it uses.

#include <inttypes.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

typedef uint64_t PluginId;
struct qemu_plugin_tb;
enum { kAddToCounter = 0 };

void qemu_plugin_register_vcpu_tb_trans_cb(PluginId id,
                                           void (*callback)(PluginId, struct qemu_plugin_tb*));
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, int operation,
                                              void* counter, uint64_t amount);
void qemu_plugin_register_atexit_cb(PluginId id, void (*callback)(PluginId, void*), void* data);

__attribute__((visibility("default"))) int qemu_plugin_version = 1;
__attribute__((visibility("default"))) int qemu_plugin_install(PluginId id, const void* info,
                                                               int argc, char** argv);

static uint64_t instructions;

static void countBlock(PluginId id, struct qemu_plugin_tb* block) {
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_inline(block, kAddToCounter, &instructions,
                                             qemu_plugin_tb_n_insns(block));
}

static void tell(PluginId id, void* data) {
    (void)id;
    (void)data;
    fprintf(stderr, "Collected : %" PRIu64 "\n", instructions);
}

int qemu_plugin_install(PluginId id, const void* info, int argc, char** argv) {
    (void)info;
    (void)argc;
    (void)argv;
    qemu_plugin_register_vcpu_tb_trans_cb(id, countBlock);
    qemu_plugin_register_atexit_cb(id, tell, NULL);
    return 0;
}
