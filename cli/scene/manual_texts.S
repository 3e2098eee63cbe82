// What the manual says about parameters, for `brisel params`.
  .section .rodata.kBriselManualParameters, "a"
  .globl kBriselManualParameters, kBriselManualParametersEnd
  .hidden kBriselManualParameters, kBriselManualParametersEnd
kBriselManualParameters:
  .incbin "parameters.toml"
kBriselManualParametersEnd:

  .section .note.GNU-stack, "", %progbits
