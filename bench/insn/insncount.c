/* qemu-user plugin: counts executed guest instructions, a deterministic cost measure for code we
 * cannot time. Prints "insns: N" to the qemu log (stderr, with -d plugin) at exit. */
#include <inttypes.h>
#include <stdio.h>
#include <qemu-plugin.h>

QEMU_PLUGIN_EXPORT int qemu_plugin_version = QEMU_PLUGIN_VERSION;
static uint64_t count;

static void tb_trans(qemu_plugin_id_t id, struct qemu_plugin_tb *tb) {
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_inline(tb, QEMU_PLUGIN_INLINE_ADD_U64, &count,
                                             qemu_plugin_tb_n_insns(tb));
}

static void at_exit(qemu_plugin_id_t id, void *p) {
    (void)id;
    (void)p;
    char buf[64];
    snprintf(buf, sizeof buf, "insns: %" PRIu64 "\n", count);
    qemu_plugin_outs(buf);
}

QEMU_PLUGIN_EXPORT int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t *info,
                                           int argc, char **argv) {
    (void)info;
    (void)argc;
    (void)argv;
    qemu_plugin_register_vcpu_tb_trans_cb(id, tb_trans);
    qemu_plugin_register_atexit_cb(id, at_exit, NULL);
    return 0;
}
