// Adds two integers of 32 bits, or subtracts the second when addsub is 1; what does not fit is lost (modulo 2 ** 32).
//   step complement:  ones' complement of what is subtracted
//   step lower:       the low 16 bits
//   step upper:       the high 16 bits with the carry
// Latency 3 cycles: a register behind each step.
module xfc_alulong
  (input sysclk, reset, enable, addsub,
   input [32:1] aa,
   input [32:1] bb,
   output [32:1] cc);

  localparam half = 16;
  wire unused = &{1'b0, reset};

  // complement
  wire [32:1] addend_d = bb ^ {32{addsub}};

  wire [32:1] augend, addend;
  wire subtract;
  xfc_register #(32, 1) complement_0 (sysclk, enable, aa, augend);
  xfc_register #(32, 1) complement_1 (sysclk, enable, addend_d, addend);
  xfc_register #(1, 1) complement_2 (sysclk, enable, addsub, subtract);

  // lower
  wire [half:0] lower_d = {1'b0, augend[half:1]} + {1'b0, addend[half:1]} + {{half{1'b0}}, subtract};

  wire [half:0] lower;
  wire [half-1:0] upper_augend, upper_addend;
  xfc_register #(half + 1, 1) lower_0 (sysclk, enable, lower_d, lower);
  xfc_register #(half, 1) lower_1 (sysclk, enable, augend[32:half+1], upper_augend);
  xfc_register #(half, 1) lower_2 (sysclk, enable, addend[32:half+1], upper_addend);

  // upper
  wire [half-1:0] upper_d = upper_augend + upper_addend + {{half-1{1'b0}}, lower[half]};

  xfc_register #(32, 1) upper_0 (sysclk, enable, {upper_d, lower[half-1:0]}, cc);
endmodule
