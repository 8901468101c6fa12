// Multiplies an IEEE number by two to the power `places`, a signed integer: exact, or infinite when too large and zero
// when below the normal numbers, whatever `places` is. Subnormal operands are zero; nan is the quiet one.
//   step clamp:  places to the range that matters, one bit more than exponents have, either way; flags
//   step scale:  the sum of the exponents, range and flags
// Latency 2 cycles: a register behind each step.
module xfc_scale_ieee
  #(parameter exponent_bits = 8,
    parameter fraction_bits = 23)
  (input sysclk, enable, sign,
   input [exponent_bits-1:0] exponent_in,
   input [fraction_bits-1:0] fraction_in,
   input [32:1] places,
   output [exponent_bits+fraction_bits:0] scaled);

  localparam clamped_bits = exponent_bits + 2;      // two's complement
  localparam wide_bits = exponent_bits + 3;         // of the sum

  // clamp
  wire negative = places[32];
  wire fits = places[32:clamped_bits] == {33-clamped_bits{negative}};
  wire [clamped_bits-1:0] clamped_d =
    {negative, fits ? places[clamped_bits-1:1] : {clamped_bits-1{!negative}}};
  wire ones = &exponent_in;
  wire fraction_is_zero = fraction_in == 0;
  wire [3:0] marks_d =                              // sign, nan, zip, sat
    {sign, ones & !fraction_is_zero, exponent_in == 0, ones & fraction_is_zero};

  wire [clamped_bits-1:0] clamped;
  wire [exponent_bits-1:0] exponent;
  wire [fraction_bits-1:0] fraction;
  wire [3:0] marks;
  xfc_register #(clamped_bits, 1) clamp_0 (sysclk, enable, clamped_d, clamped);
  xfc_register #(exponent_bits, 1) clamp_1 (sysclk, enable, exponent_in, exponent);
  xfc_register #(fraction_bits, 1) clamp_2 (sysclk, enable, fraction_in, fraction);
  xfc_register #(4, 1) clamp_3 (sysclk, enable, marks_d, marks);

  // scale
  wire [wide_bits-1:0] sum = {3'b000, exponent} + {clamped[clamped_bits-1], clamped};
  wire [exponent_bits+fraction_bits:0] packed_d;
  xfc_pack_ieee #(exponent_bits, fraction_bits, wide_bits) pack (sum, fraction, marks, packed_d);

  xfc_register #(exponent_bits + fraction_bits + 1, 1) scale_0
    (sysclk, enable, packed_d, scaled);
endmodule
