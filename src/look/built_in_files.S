// The index of presets and their files, one behind the other, and where each ends.
  .section .rodata.kBriselBuiltInFiles, "a"
  .globl kBriselBuiltInFiles
  .hidden kBriselBuiltInFiles
kBriselBuiltInFiles:

  .section .rodata.kBriselBuiltInEnds, "a"
  .balign 4
  .globl kBriselBuiltInEnds
  .hidden kBriselBuiltInEnds
kBriselBuiltInEnds:

  .macro built_in_file name
  .section .rodata.kBriselBuiltInFiles
  .incbin "\name"
1:
  .section .rodata.kBriselBuiltInEnds
  .long 1b - kBriselBuiltInFiles
  .endm

#define BUILT_IN_FILE(name) built_in_file name
#include "built_in_list.inc"

  .section .note.GNU-stack, "", %progbits
