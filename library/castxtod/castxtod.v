// Converts an XFloat value in adder form to an IEEE double. Exponent field 0 is zero; nan is 7FF8000000000000. A
// double holds every mantissa, so the result is exact and roundconvert costs cycles alone.
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
// Latency 7 + doublespeed + roundconvert * (1 + doublespeed) cycles; xfc_to_ieee holds the steps and says where
// registers stand.
module castxtod
  #(parameter mantissa = 32, roundconvert = 0, doublespeed = 0)
  (input sysclk, reset, enable,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   output [64:1] cc);

  generate
    if ((mantissa != 32 && mantissa != 36) || roundconvert < 0 || roundconvert > 1 || doublespeed < 0 ||
        doublespeed > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam guard_bits = 4;
  localparam bias_difference = 896;   // a double's exponent field less a single's
  localparam exponent_bits = 10;
  localparam ieee_exponent = 11;
  localparam fraction_bits = 52;
  localparam latency = (doublespeed + 1) * roundconvert + doublespeed + 7;

  wire [12:0] exponent = {3'b000, aa[exponent_bits:1]};
  wire [2:0] flags = {aanan, aazip | (exponent == 0), aasat};
  xfc_to_ieee #(mantissa, guard_bits + bias_difference, ieee_exponent, fraction_bits, latency) to_ieee
    (sysclk, enable, aa[mantissa+exponent_bits:exponent_bits+1], exponent, flags, cc);
endmodule
