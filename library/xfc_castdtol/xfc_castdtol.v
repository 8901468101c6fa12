// Converts an IEEE double to an integer of 32 bits, toward zero as C does. Out of range it is the nearest end, nan is 0.
//   step unpack:      range, distance; the 31 highest bits of the significand are all that an integer has room for
//   step coarse:      shift right by whole bytes
//   step fine:        shift right by single bits; what goes over the edge is dropped
//   step complement:  ones' complement of a negative number
//   step negate:      one more
//   step settle:      the ends of the range
//   step deliver:     the seventh cycle
// Latency 1 + normspeed and 1 cycle when neither roundconvert nor outputpipe is 1, else 2 + doublespeed * roundconvert
// cycles, 3 to 7: registers behind unpack, fine and settle; a fourth stands behind coarse, then negate, complement,
// deliver. roundconvert changes nothing else.
module xfc_castdtol
  #(parameter roundconvert = 0, outputpipe = 1, doublespeed = 0, normspeed = 3)
  (input sysclk, reset, enable,
   input [64:1] aa,
   output [32:1] cc);

  generate
    if (roundconvert < 0 || roundconvert > 1 || outputpipe < 0 || outputpipe > 1 || doublespeed < 0 ||
        doublespeed > 1 || normspeed < 1 || normspeed > 3)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam magnitude_bits = 31;
  localparam latency = normspeed + 1 + (roundconvert == 0 && outputpipe == 0 ? 1 : 2 + doublespeed * roundconvert);
  localparam coarse_border = latency / 4;
  localparam negate_border = latency / 5;
  localparam complement_border = latency / 6;
  localparam deliver_border = latency / 7;

  // unpack: 1023 is the bias, 1053 the exponent of 2 to the power 30
  wire [10:0] exponent = aa[63:53];
  wire nan = (&exponent) & (aa[52:1] != 0);
  wire below_one = exponent < 1023 || nan;
  wire beyond_d = exponent > 1053 && !nan;
  wire [4:0] distance_d = 5'd29 - exponent[4:0];
  wire [magnitude_bits-1:0] magnitude_d = {1'b1, aa[52:23]} & {magnitude_bits{!below_one}};

  wire [4:0] distance;
  wire [magnitude_bits-1:0] magnitude;
  wire [1:0] marks;   // sign, beyond
  xfc_register #(5, 1) unpack_0 (sysclk, enable, distance_d, distance);
  xfc_register #(magnitude_bits, 1) unpack_1 (sysclk, enable, magnitude_d, magnitude);
  xfc_register #(2, 1) unpack_2 (sysclk, enable, {aa[64], beyond_d}, marks);

  // coarse
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

  // complement
  wire [magnitude_bits:0] complement_d = {1'b0, whole} ^ {magnitude_bits+1{fine_marks[1]}};

  wire [magnitude_bits:0] complement;
  wire [1:0] complement_marks;
  xfc_register #(magnitude_bits + 1, complement_border) complement_0 (sysclk, enable, complement_d, complement);
  xfc_register #(2, complement_border) complement_1 (sysclk, enable, fine_marks, complement_marks);

  // negate
  wire [magnitude_bits:0] negate_d = complement + {{magnitude_bits{1'b0}}, complement_marks[1]};

  wire [magnitude_bits:0] whole_signed;
  wire [1:0] negate_marks;
  xfc_register #(magnitude_bits + 1, negate_border) negate_0 (sysclk, enable, negate_d, whole_signed);
  xfc_register #(2, negate_border) negate_1 (sysclk, enable, complement_marks, negate_marks);

  // settle
  wire [magnitude_bits:0] settled_d =
    negate_marks[0] ? {negate_marks[1], {magnitude_bits{!negate_marks[1]}}} : whole_signed;

  wire [magnitude_bits:0] settled;
  xfc_register #(magnitude_bits + 1, 1) settle_0 (sysclk, enable, settled_d, settled);

  // deliver
  xfc_register #(magnitude_bits + 1, deliver_border) deliver_0 (sysclk, enable, settled, cc);
endmodule
