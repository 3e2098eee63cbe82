// The bitmap files one behind the other, and a directory of identifier, offset and size that ends
// with a zero. Offsets instead of addresses leave nothing to relocate when the module is loaded.
  .section .rodata.kBriselBitmapFiles, "a"
  .globl kBriselBitmapFiles
  .hidden kBriselBitmapFiles
kBriselBitmapFiles:

  .section .rodata.kBriselBitmapDirectory, "a"
  .balign 4
  .globl kBriselBitmapDirectory
  .hidden kBriselBitmapDirectory
kBriselBitmapDirectory:

  .macro bitmap_file identifier, file
  .section .rodata.kBriselBitmapFiles
1:
  .incbin "\file"
2:
  .section .rodata.kBriselBitmapDirectory
  .long \identifier, 1b - kBriselBitmapFiles, 2b - 1b
  .endm

#define BITMAP_FILE(identifier, file) bitmap_file identifier, file
#include "bitmap_list.inc"
  .long 0

  .section .note.GNU-stack, "", %progbits
