// Converts an integer of 32 bits to YDouble: in adder form (target 1), its bits where the exponent of 2 to the power 31
// puts them, or normalized for a multiplier or divider (target 0). Exact.
//   step magnitude:  without its sign (target 0)
//   step normalize:  highest 1 to the front (target 0)
//   step place:      the fields
// Latency 1 cycle.
module xfc_castltoy
  #(parameter target = 1)
  (input sysclk, reset, enable,
   input [32:1] aa,
   output [10*target+67:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (target < 0 || target > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam width = 32;
  localparam padded = 8 * (width / 8 + 1);
  localparam [12:0] exponent = 13'd1054;   // of 2 to the power 31

  wire sign = aa[width];
  wire zero_d = aa == 0;
  wire [10*target+67:1] value_d;
  generate
    if (target == 1) begin : for_adders
      // place
      assign value_d = {{5{sign}}, aa, 27'd0, exponent};
    end else begin : for_others
      // magnitude
      wire [width-1:0] magnitude = (aa ^ {width{sign}}) + {{width-1{1'b0}}, sign};

      // normalize
      wire [padded-1:0] normal;
      wire [5:0] zeros;
      wire passed;
      xfc_normalize #(width, 1, 0, 0, 0, 0) normalize (sysclk, enable, magnitude, 1'b0, 1'b0, normal, zeros, passed);

      // place
      wire unused_passed = &{1'b0, passed};
      assign value_d = {sign, normal, {53-padded{1'b0}}, exponent - {7'd0, zeros}};
    end
  endgenerate

  xfc_register #(10 * target + 67, 1) place_0 (sysclk, enable, value_d, cc);
  xfc_register #(1, 1) place_1 (sysclk, enable, zero_d, cczip);
  assign ccsat = 1'b0;
  assign ccnan = 1'b0;
endmodule
