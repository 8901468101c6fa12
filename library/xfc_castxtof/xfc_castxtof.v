// Converts an XFloat value in adder form to an IEEE single: nearest, to even between two. What is below the smallest
// normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Exponent field 0 is zero. The
// common part xfc_round_xfloat does it; its header says how.
// Latency 3 + 2 * normspeed cycles.
module xfc_castxtof
  #(parameter mantissa = 32, normspeed = 2)
  (input sysclk, reset, enable,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   output [32:1] cc);

  xfc_round_xfloat #(mantissa, normspeed) round (sysclk, reset, enable, aa, aasat, aazip, aanan, cc);
endmodule
