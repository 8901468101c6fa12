// Converts an IEEE double to YDouble: for a multiplier or divider (target 0) or for an adder (target 1). Exact, so
// roundconvert changes nothing but cycles; a subnormal number is zero.
//   step unpack:   flags, hidden one; ones' complement of a negative number for an adder
//   step convert:  one more makes it the two's complement, lower half; others take sign and magnitude
//   step carry:    upper half; sign bits in front
// Latency for an adder 1 cycle when neither roundconvert nor outputpipe is 1, else 2 + doublespeed * roundconvert; for
// others 1 + outputpipe. A register behind carry always, the second behind unpack, the third behind convert.
module xfc_castdtoy
  #(parameter target = 1, roundconvert = 0, outputpipe = 1, doublespeed = 0, synthesize = 0)
  (input sysclk, reset, enable,
   input [64:1] aa,
   output [10*target+67:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (target < 0 || target > 1 || roundconvert < 0 || roundconvert > 1 || outputpipe < 0 || outputpipe > 1 ||
        doublespeed < 0 || doublespeed > 1 || synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 13;
  localparam ieee_exponent = 11;
  localparam fraction_bits = 52;
  localparam significand_bits = fraction_bits + 1;
  localparam low_bits = fraction_bits / 2;
  localparam high_bits = significand_bits - low_bits;
  localparam unpack_border = target == 0 || roundconvert == 0 ? outputpipe : 1;
  localparam convert_border = target == 0 ? 0 : doublespeed * roundconvert;

  // unpack
  wire [ieee_exponent-1:0] exponent_d = aa[63:53];
  wire exponent_is_zero = exponent_d == 0;
  wire exponent_is_ones = &exponent_d;
  wire fraction_is_zero = aa[fraction_bits:1] == 0;
  wire [3:0] marks_d =   // sign, nan, zip, sat
    {aa[64], exponent_is_ones & !fraction_is_zero, exponent_is_zero, exponent_is_ones & fraction_is_zero};
  wire complements = target == 1 ? aa[64] : 1'b0;
  wire [significand_bits-1:0] significand_d = {1'b1, aa[fraction_bits:1]} ^ {significand_bits{complements}};

  wire [ieee_exponent-1:0] exponent;
  wire [3:0] marks;
  wire [significand_bits-1:0] significand;
  xfc_register #(ieee_exponent, unpack_border) unpack_0 (sysclk, enable, exponent_d, exponent);
  xfc_register #(4, unpack_border) unpack_1 (sysclk, enable, marks_d, marks);
  xfc_register #(significand_bits, unpack_border) unpack_2 (sysclk, enable, significand_d, significand);

  // convert
  wire increment = target == 1 ? marks[3] : 1'b0;
  wire [low_bits:0] low_d = {1'b0, significand[low_bits-1:0]} + {{low_bits{1'b0}}, increment};

  wire [ieee_exponent-1:0] convert_exponent;
  wire [3:0] convert_marks;
  wire [low_bits:0] low;
  wire [high_bits-1:0] high;
  xfc_register #(ieee_exponent, convert_border) convert_0 (sysclk, enable, exponent, convert_exponent);
  xfc_register #(4, convert_border) convert_1 (sysclk, enable, marks, convert_marks);
  xfc_register #(low_bits + 1, convert_border) convert_2 (sysclk, enable, low_d, low);
  xfc_register #(high_bits, convert_border) convert_3
    (sysclk, enable, significand[significand_bits-1:low_bits], high);

  // carry: the significand is never zero, so nothing is carried into the sign
  wire [high_bits-1:0] high_sum = high + {{high_bits-1{1'b0}}, low[low_bits]};
  wire [significand_bits-1:0] sum = {high_sum, low[low_bits-1:0]};
  wire [10*target+67:1] value_d;
  generate
    if (target == 1) begin : for_adders
      assign value_d = {{5{convert_marks[3]}}, sum, 6'd0, {exponent_bits-ieee_exponent{1'b0}}, convert_exponent};
    end else begin : for_others
      assign value_d = {convert_marks[3], sum, {exponent_bits-ieee_exponent{1'b0}}, convert_exponent};
    end
  endgenerate

  wire [2:0] flags;
  xfc_register #(10 * target + 67, 1) carry_0 (sysclk, enable, value_d, cc);
  xfc_register #(3, 1) carry_1 (sysclk, enable, convert_marks[2:0], flags);

  assign ccsat = flags[0];
  assign cczip = flags[1];
  assign ccnan = flags[2];
endmodule
