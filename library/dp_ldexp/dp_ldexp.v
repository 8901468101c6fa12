// Multiplies an IEEE double by two to the power bb, a signed integer: exact, or infinite when too large and zero when
// below the normal numbers, for every bb. Subnormal operands are zero; nan is the quiet one.
//   step clamp:  bb to the range that matters, -2 ** 12 to 2 ** 12 - 1; flags
//   step scale:  the sum of the exponents, range and flags
// Latency 2 cycles: a register behind each step.
module dp_ldexp
  (input sysclk, reset, enable,
   input signin,
   input [11:1] exponentin,
   input [52:1] mantissain,
   input [32:1] bb,
   output signout,
   output [11:1] exponentout,
   output [52:1] mantissaout);

  wire unused = &{1'b0, reset};

  localparam exponent_bits = 11;
  localparam fraction_bits = 52;
  localparam clamped_bits = exponent_bits + 2;      // two's complement
  localparam wide_bits = exponent_bits + 3;         // of the sum

  // clamp
  wire negative = bb[32];
  wire fits = bb[32:clamped_bits] == {33-clamped_bits{negative}};
  wire [clamped_bits-1:0] clamped_d =
    {negative, fits ? bb[clamped_bits-1:1] : {clamped_bits-1{!negative}}};
  wire ones = &exponentin;
  wire fraction_is_zero = mantissain == 0;
  wire [3:0] marks_d =                              // sign, nan, zip, sat
    {signin, ones & !fraction_is_zero, exponentin == 0, ones & fraction_is_zero};

  wire [clamped_bits-1:0] clamped;
  wire [exponent_bits-1:0] exponent;
  wire [fraction_bits-1:0] fraction;
  wire [3:0] marks;
  xfc_register #(clamped_bits, 1) clamp_0 (sysclk, enable, clamped_d, clamped);
  xfc_register #(exponent_bits, 1) clamp_1 (sysclk, enable, exponentin, exponent);
  xfc_register #(fraction_bits, 1) clamp_2 (sysclk, enable, mantissain, fraction);
  xfc_register #(4, 1) clamp_3 (sysclk, enable, marks_d, marks);

  // scale
  wire [wide_bits-1:0] scaled = {3'b000, exponent} + {clamped[clamped_bits-1], clamped};
  wire [exponent_bits+fraction_bits:0] packed_d;
  xfc_pack_ieee #(exponent_bits, fraction_bits, wide_bits) pack (scaled, fraction, marks, packed_d);

  xfc_register #(exponent_bits + fraction_bits + 1, 1) scale_0
    (sysclk, enable, packed_d, {signout, exponentout, mantissaout});
endmodule
