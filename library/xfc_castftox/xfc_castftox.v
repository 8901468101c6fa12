// Converts an IEEE single to XFloat: for an adder (target 0), a multiplier (1) or a divider (2). Exact, so
// roundconvert changes nothing; a subnormal number is zero.
//   cycle 1  unpack:   flags, hidden one, sign bits in front; ones' complement of a negative number
//   cycle 2  convert:  one more makes it the two's complement; a divider takes sign and magnitude
// Latency 1 + outputpipe cycles, 1 for a divider.
module xfc_castftox
  #(parameter target = 0, roundconvert = 0, mantissa = 32, outputpipe = 1)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (target < 0 || target > 2 || roundconvert < 0 || roundconvert > 1 || (mantissa != 32 && mantissa != 36) ||
        outputpipe < 0 || outputpipe > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam ieee_exponent = 8;
  localparam fraction_bits = 23;
  localparam significand_bits = fraction_bits + 1;
  localparam signs = target == 0 ? 5 : 1;   // the adder has four guard bits
  localparam tail = mantissa - significand_bits - signs;
  localparam pipelined = target != 2 ? outputpipe : 0;

  // flags: sat, zip, nan from low to high
  wire [2:0] flags, flags_q, flags_cc;
  wire [ieee_exponent-1:0] exponent, exponent_q;
  wire [exponent_bits-1:0] exponent_cc;
  wire [significand_bits-1:0] significand, significand_q, magnitude_sum;
  wire sign, sign_q, increment;
  wire [mantissa-1:0] converted, mantissa_cc;

  // unpack
  assign sign = aa[32];
  assign exponent = aa[31:24];
  wire exponent_is_zero = exponent == 0;
  wire exponent_is_ones = &exponent;
  wire fraction_is_zero = aa[23:1] == 0;
  assign flags = {exponent_is_ones & !fraction_is_zero, exponent_is_zero, exponent_is_ones & fraction_is_zero};
  assign significand = target != 2 && sign ? ~{1'b1, aa[23:1]} : {1'b1, aa[23:1]};

  xfc_register #(3, pipelined) unpack_flags (sysclk, enable, flags, flags_q);
  xfc_register #(1, pipelined) unpack_sign (sysclk, enable, sign, sign_q);
  xfc_register #(ieee_exponent, pipelined) unpack_exponent (sysclk, enable, exponent, exponent_q);
  xfc_register #(significand_bits, pipelined) unpack_significand (sysclk, enable, significand, significand_q);

  // convert: the significand is never zero, so nothing is carried into the sign
  assign increment = target != 2 ? sign_q : 1'b0;
  assign magnitude_sum = significand_q + {{significand_bits-1{1'b0}}, increment};
  assign converted = {{signs{sign_q}}, magnitude_sum, {tail{1'b0}}};

  xfc_register #(3, 1) convert_flags (sysclk, enable, flags_q, flags_cc);
  xfc_register #(exponent_bits, 1) convert_exponent (sysclk, enable, {2'b00, exponent_q}, exponent_cc);
  xfc_register #(mantissa, 1) convert_mantissa (sysclk, enable, converted, mantissa_cc);

  assign cc = {mantissa_cc, exponent_cc};
  assign ccsat = flags_cc[0];
  assign cczip = flags_cc[1];
  assign ccnan = flags_cc[2];
endmodule
