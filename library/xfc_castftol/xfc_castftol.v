// Converts an IEEE single to an integer of 32 bits, toward zero as C does. Out of range it is the nearest end, nan
// is 0.
//   step unpack:  range, distance; the significand as if it were worth 2 to the power 30
//   step coarse:  shift right by whole bytes
//   step fine:    shift right by single bits; what goes over the edge is dropped
//   step negate:  two's complement of a negative number
//   step settle:  the ends of the range
// Latency 3 + normspeed cycles: registers behind unpack, fine, negate and settle; a fifth stands behind coarse.
module xfc_castftol
  #(parameter normspeed = 2)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [32:1] cc);

  generate
    if (normspeed < 1 || normspeed > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 8;
  localparam fraction_bits = 23;
  localparam magnitude_bits = 31;
  localparam coarse_border = normspeed - 1;
  localparam [exponent_bits-1:0] bias = 8'd127;
  localparam [exponent_bits-1:0] last_exponent = 8'd157;   // of 2 to the power 30

  // unpack
  wire [exponent_bits-1:0] exponent = aa[exponent_bits+fraction_bits:fraction_bits+1];
  wire nan = (&exponent) & (aa[fraction_bits:1] != 0);
  wire below_one = (exponent < bias) | nan;
  wire beyond_d = (exponent > last_exponent) & !nan;
  wire [4:0] distance_d = last_exponent[4:0] - exponent[4:0];
  wire [fraction_bits:0] significand_d = {1'b1, aa[fraction_bits:1]} & {fraction_bits+1{!below_one}};

  wire [4:0] distance;
  wire [fraction_bits:0] significand;
  wire [1:0] marks;   // sign, beyond
  xfc_register #(5, 1) unpack_0 (sysclk, enable, distance_d, distance);
  xfc_register #(fraction_bits + 1, 1) unpack_1 (sysclk, enable, significand_d, significand);
  xfc_register #(2, 1) unpack_2 (sysclk, enable, {aa[32], beyond_d}, marks);

  // coarse
  wire [magnitude_bits-1:0] magnitude = {significand, {magnitude_bits-fraction_bits-1{1'b0}}};
  wire [magnitude_bits-1:0] coarse_d = magnitude >> {distance[4:3], 3'b000};

  wire [magnitude_bits-1:0] coarse;
  wire [2:0] fine_distance;
  wire [1:0] coarse_marks;
  xfc_register #(magnitude_bits, coarse_border) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(3, coarse_border) coarse_1 (sysclk, enable, distance[2:0], fine_distance);
  xfc_register #(2, coarse_border) coarse_2 (sysclk, enable, marks, coarse_marks);

  // fine
  wire [magnitude_bits-1:0] whole_d = coarse >> fine_distance;

  wire [magnitude_bits-1:0] whole;
  wire [1:0] fine_marks;
  xfc_register #(magnitude_bits, 1) fine_0 (sysclk, enable, whole_d, whole);
  xfc_register #(2, 1) fine_1 (sysclk, enable, coarse_marks, fine_marks);

  // negate
  wire [magnitude_bits:0] complement = {1'b0, whole} ^ {magnitude_bits+1{fine_marks[1]}};
  wire [magnitude_bits:0] negate_d = complement + {{magnitude_bits{1'b0}}, fine_marks[1]};

  wire [magnitude_bits:0] whole_signed;
  wire [1:0] negate_marks;
  xfc_register #(magnitude_bits + 1, 1) negate_0 (sysclk, enable, negate_d, whole_signed);
  xfc_register #(2, 1) negate_1 (sysclk, enable, fine_marks, negate_marks);

  // settle
  wire [magnitude_bits:0] settled_d =
    negate_marks[0] ? {negate_marks[1], {magnitude_bits{!negate_marks[1]}}} : whole_signed;

  xfc_register #(magnitude_bits + 1, 1) settle_0 (sysclk, enable, settled_d, cc);
endmodule
