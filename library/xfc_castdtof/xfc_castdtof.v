// Converts an IEEE double to an IEEE single: nearest, to even between two, whatever roundconvert is. What is below the
// smallest normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Subnormal is zero.
//   cycle 1  decide:  the exponent with the single's bias, whether to round up, whether the result is in range
//   cycle 2  pack:    one carry chain through fraction and exponent; the fields of a special result
// Latency 2 cycles. mantissa changes nothing.
module xfc_castdtof
  #(parameter roundconvert = 0, mantissa = 32)
  (input sysclk, reset, enable,
   input [64:1] aa,
   output [32:1] cc);

  generate
    if (roundconvert < 0 || roundconvert > 1 || (mantissa != 32 && mantissa != 36))
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam double_exponent = 11;
  localparam double_fraction = 52;
  localparam ieee_exponent = 8;
  localparam fraction_bits = 23;
  localparam dropped_bits = double_fraction - fraction_bits;
  localparam bias_difference = 896;                 // a multiple of half the single's exponents
  localparam greatest = bias_difference + 254;      // exponent of the largest singles

  // decide
  wire [double_exponent-1:0] exponent_in = aa[63:53];
  wire [double_fraction-1:0] fraction_in = aa[double_fraction:1];
  wire [fraction_bits-1:0] kept_d = fraction_in[double_fraction-1:dropped_bits];
  wire up_d;
  xfc_round_even #(dropped_bits) round_even
    (fraction_in[dropped_bits], fraction_in[dropped_bits-1:0], 1'b0, up_d);
  wire carries = up_d & (&kept_d);                  // into the exponent
  wire nan_d = (&exponent_in) & (|fraction_in);
  wire infinite_d = exponent_in > greatest || (exponent_in == greatest && carries);   // or nan
  wire flushed_d = exponent_in < bias_difference || (exponent_in == bias_difference && !carries);
  wire [3:0] marks_d = {aa[64] & !nan_d, nan_d, infinite_d, flushed_d};
  wire [ieee_exponent-1:0] exponent_d = {!exponent_in[ieee_exponent-1], exponent_in[ieee_exponent-2:0]};

  wire [3:0] marks;   // sign, nan, infinite or nan, zero
  wire [ieee_exponent-1:0] exponent;
  wire [fraction_bits-1:0] kept;
  wire up;
  xfc_register #(4, 1) decide_0 (sysclk, enable, marks_d, marks);
  xfc_register #(ieee_exponent, 1) decide_1 (sysclk, enable, exponent_d, exponent);
  xfc_register #(fraction_bits, 1) decide_2 (sysclk, enable, kept_d, kept);
  xfc_register #(1, 1) decide_3 (sysclk, enable, up_d, up);

  // pack
  wire [ieee_exponent+fraction_bits-1:0] rounded = {exponent, kept} + {{ieee_exponent+fraction_bits-1{1'b0}}, up};
  wire special = marks[1] | marks[0];
  wire [ieee_exponent-1:0] packed_exponent =
    (rounded[ieee_exponent+fraction_bits-1:fraction_bits] & ~{ieee_exponent{marks[0]}}) | {ieee_exponent{marks[1]}};
  wire [fraction_bits-1:0] packed_fraction =
    {marks[2] | (rounded[fraction_bits-1] & !special), rounded[fraction_bits-2:0] & ~{fraction_bits-1{special}}};

  xfc_register #(32, 1) pack_0 (sysclk, enable, {marks[3], packed_exponent, packed_fraction}, cc);
endmodule
