// The bitmap files one behind the other, and a directory of identifier, offset and size that ends
// with a zero. Offsets instead of addresses leave nothing to relocate when the module is loaded.
  .section .rodata.brisel_bitmap_files, "a"
  .globl brisel_bitmap_files
  .hidden brisel_bitmap_files
brisel_bitmap_files:

  .section .rodata.brisel_bitmap_directory, "a"
  .balign 4
  .globl brisel_bitmap_directory
  .hidden brisel_bitmap_directory
brisel_bitmap_directory:

  .macro bitmap_file identifier, file
  .section .rodata.brisel_bitmap_files
1:
  .incbin "\file"
2:
  .section .rodata.brisel_bitmap_directory
  .long \identifier, 1b - brisel_bitmap_files, 2b - 1b
  .endm

#define BITMAP_FILE(identifier, file) bitmap_file identifier, file
#include "bitmap_list.inc"
  .long 0

  .section .note.GNU-stack, "", %progbits
