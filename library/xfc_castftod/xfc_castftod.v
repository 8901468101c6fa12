// Converts an IEEE single to an IEEE double. Exact; a subnormal number is zero, nan is 7FF8000000000000.
//   cycle 1  unpack:  flags and the exponent with the double's bias
//   cycle 2  pack:    the fields
// Latency 2 cycles.
module xfc_castftod
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [64:1] cc);

  wire unused = &{1'b0, reset};

  localparam fraction_bits = 23;
  localparam ieee_exponent = 11;
  localparam tail = 52 - fraction_bits;

  // unpack: the biases differ by 896, 7 in units of 128
  wire exponent_is_zero = aa[31:24] == 0;
  wire exponent_is_ones = &aa[31:24];
  wire fraction_is_zero = aa[fraction_bits:1] == 0;
  wire [3:0] marks_d =   // sign, nan, zip, sat
    {aa[32], exponent_is_ones & !fraction_is_zero, exponent_is_zero, exponent_is_ones & fraction_is_zero};
  wire [ieee_exponent-1:0] exponent_d = {{3'b000, aa[31]} + 4'd7, aa[30:24]};

  wire [3:0] marks;
  wire [ieee_exponent-1:0] exponent;
  wire [fraction_bits-1:0] fraction;
  xfc_register #(4, 1) unpack_0 (sysclk, enable, marks_d, marks);
  xfc_register #(ieee_exponent, 1) unpack_1 (sysclk, enable, exponent_d, exponent);
  xfc_register #(fraction_bits, 1) unpack_2 (sysclk, enable, aa[fraction_bits:1], fraction);

  // pack
  wire ones = marks[2] | marks[0];
  wire [ieee_exponent-1:0] packed_exponent = (exponent | {ieee_exponent{ones}}) & {ieee_exponent{!marks[1]}};
  wire [fraction_bits-1:0] packed_fraction =
    {marks[2] | (fraction[fraction_bits-1] & !marks[1]),
     fraction[fraction_bits-2:0] & {fraction_bits-1{!(marks[2] | marks[1])}}};

  xfc_register #(64, 1) pack_0
    (sysclk, enable, {marks[3] & !marks[2], packed_exponent, packed_fraction, {tail{1'b0}}}, cc);
endmodule
