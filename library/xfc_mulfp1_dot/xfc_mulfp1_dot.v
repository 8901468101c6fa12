// Multiplies two IEEE singles into XFloat in adder form: magnitudes from 1 to 4, the bits below the lowest or'ed into
// it. inf * 0 is nan; a subnormal operand is zero; a product with an exponent below 0 is zero, one with exponent 0 is
// delivered as half of it with exponent 1.
//   step unpack:  hidden ones, flags; bb takes the sign of the product
//   step choose:  the rows of the product, for each two bits of bb; exponents
//   step rows:    sums of four rows
//   step settle:  the product, range and flags
// Latency 4 cycles, one less when optimization is 3 and one less when device is 2: a register behind rows and settle
// always, the third behind choose, the fourth behind unpack.
module xfc_mulfp1_dot
  #(parameter mantissa = 32, device = 0, optimization = 1, synthesize = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   input [32:1] bb,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if ((mantissa != 32 && mantissa != 36) || device < 0 || device > 2 || optimization > 3 || synthesize < 0 ||
        synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam bias = 127;
  localparam fraction_bits = 23;
  localparam ieee_exponent = 8;
  localparam factor_bits = fraction_bits + 3;       // two's complement, an even number of bits
  localparam product_bits = 2 * factor_bits;
  localparam sign_bits = product_bits - 2 * fraction_bits - 2;
  localparam dropped_bits = product_bits - mantissa;
  localparam latency = (optimization < 3 ? 4 : 3) - (device == 2 ? 1 : 0);
  localparam unpack_border = latency == 4 ? 1 : 0;
  localparam choose_border = latency >= 3 ? 1 : 0;

  // unpack
  wire [ieee_exponent-1:0] a_exponent_d = aa[31:24];
  wire [ieee_exponent-1:0] b_exponent_d = bb[31:24];
  wire sign = aa[32] ^ bb[32];
  wire a_zero = a_exponent_d == 0;
  wire b_zero = b_exponent_d == 0;
  wire a_ones = &a_exponent_d;
  wire b_ones = &b_exponent_d;
  wire a_infinite = a_ones & (aa[23:1] == 0);
  wire b_infinite = b_ones & (bb[23:1] == 0);
  wire nan = (a_ones & !a_infinite) | (b_ones & !b_infinite) | (a_infinite & b_zero) | (a_zero & b_infinite);
  wire sat = !nan & (a_infinite | b_infinite);
  wire zip = !nan & !sat & (a_zero | b_zero);
  wire [2:0] marks_d = {nan, zip, sat};
  wire [fraction_bits:0] significand_d = {1'b1, aa[23:1]};
  wire [factor_bits-1:0] factor_d =
    ({3'b001, bb[23:1]} ^ {factor_bits{sign}}) + {{factor_bits-1{1'b0}}, sign};

  wire [ieee_exponent-1:0] a_exponent, b_exponent;
  wire [2:0] unpack_marks;
  wire [fraction_bits:0] significand;
  wire [factor_bits-1:0] factor;
  xfc_register #(ieee_exponent, unpack_border) unpack_0 (sysclk, enable, a_exponent_d, a_exponent);
  xfc_register #(ieee_exponent, unpack_border) unpack_1 (sysclk, enable, b_exponent_d, b_exponent);
  xfc_register #(3, unpack_border) unpack_2 (sysclk, enable, marks_d, unpack_marks);
  xfc_register #(fraction_bits + 1, unpack_border) unpack_3 (sysclk, enable, significand_d, significand);
  xfc_register #(factor_bits, unpack_border) unpack_4 (sysclk, enable, factor_d, factor);

  // choose
  wire [ieee_exponent:0] both_exponents_d = {1'b0, a_exponent} + {1'b0, b_exponent};

  wire [ieee_exponent:0] both_exponents;
  wire [3:0] choose_marks;           // sign, nan, zip, sat
  xfc_register #(ieee_exponent + 1, choose_border) choose_0 (sysclk, enable, both_exponents_d, both_exponents);
  xfc_register #(4, choose_border) choose_1
    (sysclk, enable, {factor[factor_bits-1], unpack_marks}, choose_marks);

  // rows
  wire [exponent_bits-1:0] exponent_d = {1'b0, both_exponents} - bias[exponent_bits-1:0];   // two's complement
  wire [product_bits-1:0] product;
  xfc_product #(factor_bits, synthesize, 0, 1, 0, 0, 0, choose_border) multiply
    (sysclk, enable, {2'b00, significand}, factor, product);

  wire [exponent_bits-1:0] exponent;
  wire [3:0] marks;
  xfc_register #(exponent_bits, 1) rows_0 (sysclk, enable, exponent_d, exponent);
  xfc_register #(4, 1) rows_1 (sysclk, enable, choose_marks, marks);

  // settle: the product's bits from 4 on are its sign, known before
  wire lost = |product[dropped_bits-1:0];
  wire halve = exponent == 0;
  wire [mantissa-1:0] kept =
    {{sign_bits{marks[3]}}, product[product_bits-sign_bits-1:dropped_bits+1], product[dropped_bits] | lost};
  wire [mantissa-1:0] result_d = halve ? {kept[mantissa-1], kept[mantissa-1:2], kept[1] | kept[0]} : kept;
  wire [exponent_bits-1:0] next_exponent = {exponent[exponent_bits-1:1], exponent[0] | halve};
  wire too_small = exponent[exponent_bits-1];
  wire [2:0] result_flags_d = {marks[2], marks[1] | (too_small & !marks[2] & !marks[0]), marks[0]};

  wire [2:0] result_flags;
  xfc_register #(exponent_bits, 1) settle_0 (sysclk, enable, next_exponent, cc[exponent_bits:1]);
  xfc_register #(mantissa, 1) settle_1 (sysclk, enable, result_d, cc[mantissa+exponent_bits:exponent_bits+1]);
  xfc_register #(3, 1) settle_2 (sysclk, enable, result_flags_d, result_flags);
  assign ccsat = result_flags[0];
  assign cczip = result_flags[1];
  assign ccnan = result_flags[2];
  wire unused_sign = &{1'b0, product[product_bits-1:product_bits-sign_bits]};
endmodule
