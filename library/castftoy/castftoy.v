// Converts an IEEE single to YDouble: for a multiplier or divider (target 0) or for an adder (target 1). Exact, so
// roundconvert changes nothing, nor does mantissa; a subnormal number is zero.
//   step unpack:   flags, hidden one, the double's bias; ones' complement of a negative number for an adder
//   step convert:  one more makes it the two's complement, sign bits in front; others take sign and magnitude
//   step deliver:  the cycle that a divider behind it asks for
// Latency 2 + divider cycles: the third register stands behind deliver.
module castftoy
  #(parameter target = 1, roundconvert = 0, mantissa = 32, divider = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [10*target+67:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (target < 0 || target > 1 || roundconvert < 0 || roundconvert > 1 || (mantissa != 32 && mantissa != 36) ||
        divider < 0 || divider > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 13;
  localparam ieee_exponent = 11;                    // of a double
  localparam fraction_bits = 23;
  localparam significand_bits = fraction_bits + 1;
  localparam tail = 52 - fraction_bits;

  // unpack: the biases differ by 896, 7 in units of 128
  wire exponent_is_zero = aa[31:24] == 0;
  wire exponent_is_ones = &aa[31:24];
  wire fraction_is_zero = aa[fraction_bits:1] == 0;
  wire [3:0] marks_d =   // sign, nan, zip, sat
    {aa[32], exponent_is_ones & !fraction_is_zero, exponent_is_zero, exponent_is_ones & fraction_is_zero};
  wire [ieee_exponent-1:0] exponent_d = {{3'b000, aa[31]} + 4'd7, aa[30:24]};
  wire complements = target == 1 ? aa[32] : 1'b0;
  wire [significand_bits-1:0] significand_d = {1'b1, aa[fraction_bits:1]} ^ {significand_bits{complements}};

  wire [ieee_exponent-1:0] exponent;
  wire [3:0] marks;
  wire [significand_bits-1:0] significand;
  xfc_register #(ieee_exponent, 1) unpack_0 (sysclk, enable, exponent_d, exponent);
  xfc_register #(4, 1) unpack_1 (sysclk, enable, marks_d, marks);
  xfc_register #(significand_bits, 1) unpack_2 (sysclk, enable, significand_d, significand);

  // convert: the significand is never zero, so nothing is carried into the sign
  wire increment = target == 1 ? marks[3] : 1'b0;
  wire [significand_bits-1:0] sum_d = significand + {{significand_bits-1{1'b0}}, increment};

  wire [ieee_exponent-1:0] convert_exponent;
  wire [3:0] convert_marks;
  wire [significand_bits-1:0] sum;
  xfc_register #(ieee_exponent, 1) convert_0 (sysclk, enable, exponent, convert_exponent);
  xfc_register #(4, 1) convert_1 (sysclk, enable, marks, convert_marks);
  xfc_register #(significand_bits, 1) convert_2 (sysclk, enable, sum_d, sum);

  // deliver
  wire [ieee_exponent-1:0] exponent_cc;
  wire [3:0] marks_cc;
  wire [significand_bits-1:0] significand_cc;
  xfc_register #(ieee_exponent, divider) deliver_0 (sysclk, enable, convert_exponent, exponent_cc);
  xfc_register #(4, divider) deliver_1 (sysclk, enable, convert_marks, marks_cc);
  xfc_register #(significand_bits, divider) deliver_2 (sysclk, enable, sum, significand_cc);

  generate
    if (target == 1) begin : for_adders
      assign cc =
        {{5{marks_cc[3]}}, significand_cc, {tail{1'b0}}, 6'd0, {exponent_bits-ieee_exponent{1'b0}}, exponent_cc};
    end else begin : for_others
      assign cc = {marks_cc[3], significand_cc, {tail{1'b0}}, {exponent_bits-ieee_exponent{1'b0}}, exponent_cc};
    end
  endgenerate
  assign ccsat = marks_cc[0];
  assign cczip = marks_cc[1];
  assign ccnan = marks_cc[2];
endmodule
