// Converts an integer of 32 bits to an IEEE double. A double holds every integer, so the result is exact and
// roundconvert costs cycles alone.
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
// Latency 4 + normspeed + doublespeed + roundconvert * (1 + doublespeed) cycles; xfc_to_ieee holds the steps and says
// where registers stand.
module xfc_castltod
  #(parameter roundconvert = 0, normspeed = 3, doublespeed = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [64:1] cc);

  generate
    if (roundconvert < 0 || roundconvert > 1 || normspeed < 1 || normspeed > 3 || doublespeed < 0 || doublespeed > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam adjust = 1053;   // exponent field of the highest bit behind the sign
  localparam ieee_exponent = 11;
  localparam fraction_bits = 52;
  localparam latency = (doublespeed + 1) * roundconvert + normspeed + doublespeed + 4;

  xfc_to_ieee #(32, adjust, ieee_exponent, fraction_bits, latency) to_ieee
    (sysclk, enable, aa, 13'd0, 3'b000, cc);
endmodule
