// Converts a signed integer of 32 bits to XFloat: for an adder (target 0), a multiplier (1) or a divider (2, sign and
// magnitude). Exact: the highest bit of the number stands behind the sign, in adder form in the guard bits.
//   step magnitude:  a divider takes the magnitude
//   step normalize:  leading zeros, shift left, exponent
// Latency 1 cycle: a register behind normalize.
module xfc_castltox
  #(parameter target = 0, mantissa = 32)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (target < 0 || target > 2 || (mantissa != 32 && mantissa != 36))
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam integer_bits = 32;
  localparam magnitude_bits = integer_bits - 1;
  localparam levels = 5;                            // enough to count and shift magnitude_bits
  localparam guard_bits = target == 0 ? 4 : 0;
  localparam highest_exponent = 127 + magnitude_bits - 1 - guard_bits;

  // magnitude: 2 ** 31 is half of it, one exponent higher
  wire sign = aa[integer_bits];
  wire negates = target == 2 ? sign : 1'b0;
  wire [integer_bits-1:0] converted = (aa ^ {integer_bits{negates}}) + {{integer_bits-1{1'b0}}, negates};
  wire largest = target == 2 ? converted[integer_bits-1] : 1'b0;
  wire [magnitude_bits-1:0] value = {converted[magnitude_bits-1] | largest, converted[magnitude_bits-2:0]};

  // normalize
  wire complements = target == 2 ? 1'b0 : sign;
  wire [levels-1:0] zeros;
  xfc_leading_zeros #(magnitude_bits, levels) count_zeros (value ^ {magnitude_bits{complements}}, zeros);
  wire [magnitude_bits-1:0] shifted;
  xfc_shift_left #(magnitude_bits, levels, 1) shift (value, zeros, 1'b0, shifted);
  wire zip_d = !shifted[magnitude_bits-1] & (target == 2 || !sign);
  wire [exponent_bits-1:0] exponent_d =
    highest_exponent[exponent_bits-1:0] + {{exponent_bits-1{1'b0}}, largest} - {{exponent_bits-levels{1'b0}}, zeros};
  // A bit more, since Verilog has no empty repetition.
  wire [mantissa:0] mantissa_d = {sign, shifted, {mantissa-integer_bits+1{1'b0}}};
  wire unused_bit = &{1'b0, mantissa_d[0]};

  xfc_register #(exponent_bits, 1) normalize_0 (sysclk, enable, exponent_d, cc[exponent_bits:1]);
  xfc_register #(mantissa, 1) normalize_1
    (sysclk, enable, mantissa_d[mantissa:1], cc[mantissa+exponent_bits:exponent_bits+1]);
  xfc_register #(1, 1) normalize_2 (sysclk, enable, zip_d, cczip);
  assign ccsat = 1'b0;
  assign ccnan = 1'b0;
endmodule
