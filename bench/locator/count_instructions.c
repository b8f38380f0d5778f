/* A plug-in of qemu's user-mode emulators: prints how many instructions the program executed. Declares what it
   uses of qemu's interface, version 1, whose header is not packaged. */
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#include "velmora/portability.h"

typedef uint64_t qemu_plugin_id_t;
struct qemu_plugin_tb;
struct qemu_info_t;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };
typedef void (*TranslateCallback)(qemu_plugin_id_t id, struct qemu_plugin_tb* block);
typedef void (*ExitCallback)(qemu_plugin_id_t id, void* data);
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id, TranslateCallback callback);
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op op, void* counter,
                                              uint64_t add);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, ExitCallback callback, void* data);

VELMORA_SYMBOL_EXPORT int qemu_plugin_version = 1;
static uint64_t executed;

static void Translated(qemu_plugin_id_t id, struct qemu_plugin_tb* block) {
  (void)id;
  qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, &executed,
                                           qemu_plugin_tb_n_insns(block));
}

static void Print(qemu_plugin_id_t id, void* data) {
  (void)id;
  (void)data;
  fprintf(stderr, "%llu\n", (unsigned long long)executed);
}

VELMORA_SYMBOL_EXPORT int qemu_plugin_install(qemu_plugin_id_t id, const struct qemu_info_t* info,
                                              int count, char** words) {
  (void)info;
  (void)count;
  (void)words;
  qemu_plugin_register_vcpu_tb_trans_cb(id, Translated);
  qemu_plugin_register_atexit_cb(id, Print, NULL);
  return 0;
}
