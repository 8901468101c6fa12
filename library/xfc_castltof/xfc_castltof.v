// Converts an integer of 32 bits to an IEEE single: nearest, to even between two.
//   step complement:  ones' complement of a negative mantissa, one low unit short of its magnitude
//   step bytes:       how many bytes in front are empty
//   step coarse:      shift left by so many bytes
//   step bits:        zeros in front of the first byte
//   step fine:        shift left by so many bits
//   step decide:      whether to round up; the exponent of the leading one; nothing but zeros is zero
//   step round:       lower half of the fraction, for rounding and for the missing unit
//   step carry:       upper half of the fraction and the exponent
//   step range:       too small, too large
//   step pack:        the fields
// Latency 3 + 2 * normspeed cycles; xfc_to_ieee holds the steps and says where registers stand.
module xfc_castltof
  #(parameter normspeed = 2)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [32:1] cc);

  generate
    if (normspeed < 1 || normspeed > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam adjust = 157;   // exponent field of the highest bit behind the sign
  localparam ieee_exponent = 8;
  localparam fraction_bits = 23;
  localparam latency = 2 * normspeed + 3;

  xfc_to_ieee #(32, adjust, ieee_exponent, fraction_bits, latency) to_ieee
    (sysclk, enable, aa, 13'd0, 3'b000, cc);
endmodule
