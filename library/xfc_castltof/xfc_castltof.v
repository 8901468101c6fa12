// Converts a signed integer of 32 bits to an IEEE single: nearest, to even between two. The integer is a mantissa of
// 32 bits in adder form under one constant exponent, and the common part xfc_round_xfloat rounds it.
// Latency 3 + 2 * normspeed cycles.
module xfc_castltof
  #(parameter normspeed = 2)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [32:1] cc);

  // The exponent of a mantissa whose lowest bit is 1.
  localparam integer_exponent = 127 + 26;

  xfc_round_xfloat #(32, normspeed) round
    (sysclk, reset, enable, {aa, integer_exponent[9:0]}, 1'b0, 1'b0, 1'b0, cc);
endmodule
