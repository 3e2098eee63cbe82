// The index of presets and their files, one behind the other, and where each ends.
#if defined(_WIN32)
  .macro read_only_section name
  .section .rdata$\name, "dr"
  .endm
  .macro local name
  .endm
#else
  .macro read_only_section name
  .section .rodata.\name, "a"
  .endm
  .macro local name
  .hidden \name
  .endm
#endif

  read_only_section kBriselBuiltInFiles
  .globl kBriselBuiltInFiles
  local kBriselBuiltInFiles
kBriselBuiltInFiles:

  read_only_section kBriselBuiltInEnds
  .balign 4
  .globl kBriselBuiltInEnds
  local kBriselBuiltInEnds
kBriselBuiltInEnds:

  .macro built_in_file name
  read_only_section kBriselBuiltInFiles
  .incbin "\name"
1:
  read_only_section kBriselBuiltInEnds
  .long 1b - kBriselBuiltInFiles
  .endm

#define BUILT_IN_FILE(name) built_in_file name
#include "built_in_list.inc"

#if !defined(_WIN32)
  .section .note.GNU-stack, "", %progbits
#endif
