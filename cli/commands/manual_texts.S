// What the manual says about parameters, for `brisel params`.
  .section .rodata.brisel_manual_parameters, "a"
  .globl brisel_manual_parameters, brisel_manual_parameters_end
  .hidden brisel_manual_parameters, brisel_manual_parameters_end
brisel_manual_parameters:
  .incbin "parameters.toml"
brisel_manual_parameters_end:

  .section .note.GNU-stack, "", %progbits
