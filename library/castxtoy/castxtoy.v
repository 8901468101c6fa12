// Converts an XFloat value in adder form to YDouble: in adder form (target 1), or normalized for a multiplier or
// divider (target 0). Exact; exponent field 0 is zero. Combinational: no clock, latency 0. Normalizing takes its time,
// so designs take target 1 and a normalizer behind it.
//   step flags:      exponent field 0 is zero
//   step magnitude:  without its sign (target 0)
//   step normalize:  highest 1 to the front (target 0)
//   step place:      the fields; the exponent with the double's bias
module castxtoy
  #(parameter target = 1, mantissa = 32)
  (input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   output [10*target+67:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (target < 0 || target > 1 || (mantissa != 32 && mantissa != 36))
      parameter_missing_or_out_of_range refused ();
  endgenerate

  localparam exponent_bits = 10;
  localparam [12:0] bias_difference = 13'd896;

  // flags
  wire [exponent_bits-1:0] exponent = aa[exponent_bits:1];
  wire [mantissa-1:0] mantissa_in = aa[mantissa+exponent_bits:exponent_bits+1];
  wire [12:0] exponent_cc = {3'b000, exponent} + bias_difference;
  assign ccsat = aasat;
  assign ccnan = aanan;

  generate
    if (target == 1) begin : for_adders
      // place
      assign cczip = aazip | (exponent == 0);
      assign cc = {mantissa_in, {64-mantissa{1'b0}}, exponent_cc};
    end else begin : for_others
      localparam [12:0] guard_bits = 13'd5;   // and the sign, for -2 to the power mantissa - 1 has a magnitude

      // magnitude
      wire sign = mantissa_in[mantissa-1];
      wire [mantissa-1:0] magnitude = (mantissa_in ^ {mantissa{sign}}) + {{mantissa-1{1'b0}}, sign};

      // normalize
      wire [8*(mantissa/8+1)-1:0] normal;
      wire [5:0] zeros;
      wire passed;
      xfc_normalize #(mantissa, 1, 0, 0, 0, 0) normalize (1'b0, 1'b0, magnitude, 1'b0, 1'b0, normal, zeros, passed);

      // place
      wire unused = &{1'b0, passed};
      assign cczip = aazip | (exponent == 0) | (mantissa_in == 0);
      assign cc = {sign, normal, {53-8*(mantissa/8+1){1'b0}}, exponent_cc + guard_bits - {7'd0, zeros}};
    end
  endgenerate
endmodule
