// Converts a YDouble value in adder form to an IEEE single. Nearest, to even between two. What is below the smallest
// normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Exponent field 0 is zero. It
// rounds once, whatever roundconvert is.
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
// Latency 5 + 2 * normspeed cycles; xfc_to_ieee holds the steps and says where registers stand.
module xfc_castytof
  #(parameter roundconvert = 0, normspeed = 1)
  (input sysclk, reset, enable,
   input [77:1] aa,
   input aasat, aazip, aanan,
   output [32:1] cc);

  generate
    if (roundconvert < 0 || roundconvert > 1 || normspeed < 1 || normspeed > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam guard_bits = 4;
  localparam bias_difference = 896;   // a double's exponent field less a single's
  localparam mantissa_bits = 64;
  localparam exponent_bits = 13;
  localparam ieee_exponent = 8;
  localparam fraction_bits = 23;
  localparam latency = 2 * normspeed + 5;

  wire [exponent_bits-1:0] exponent = aa[exponent_bits:1];
  wire [2:0] flags = {aanan, aazip | (exponent == 0), aasat};
  xfc_to_ieee #(mantissa_bits, guard_bits - bias_difference, ieee_exponent, fraction_bits, latency) to_ieee
    (sysclk, enable, aa[mantissa_bits+exponent_bits:exponent_bits+1], exponent, flags, cc);
endmodule
