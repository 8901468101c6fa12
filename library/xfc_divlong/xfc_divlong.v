// Divides two integers of 32 bits as C does: the quotient toward zero, or with `remainder` what it leaves, which has
// the dividend's sign. x / 0 is -1 for x >= 0 and else 1, x % 0 is x; -2 ** 31 / -1 wraps to -2 ** 31 and leaves 0.
//   step magnitude:  absolute values; the result's sign
//   step digit:      32 times one bit of the quotient, without restoring
//   step restore:    a negative remainder gets the divisor back
//   step sign:       the result's sign
// Latency 35 cycles: a register behind each step.
module xfc_divlong
  #(parameter remainder = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   input [32:1] bb,
   output [32:1] cc);

  generate
    if (remainder < 0 || remainder > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam width = 32;
  localparam state_bits = 3 * width + 1;

  // magnitude
  wire [width-1:0] dividend_d = (aa ^ {width{aa[width]}}) + {{width-1{1'b0}}, aa[width]};
  wire [width-1:0] divisor_d = (bb ^ {width{bb[width]}}) + {{width-1{1'b0}}, bb[width]};
  wire negate_d = remainder == 1 ? aa[width] : aa[width] ^ bb[width];

  wire [state_bits-1:0] first_state_d = {{width+1{1'b0}}, divisor_d, dividend_d};

  wire [state_bits-1:0] first_state;
  wire negate_early, negate;
  xfc_register #(state_bits, 1) magnitude_0 (sysclk, enable, first_state_d, first_state);
  xfc_register #(1, 1) magnitude_1 (sysclk, enable, negate_d, negate_early);

  // digit: what is known in front of the first and behind each, on wires of its own
  genvar known;
  generate
    for (known = 0; known <= width; known = known + 1) begin : after
      wire [state_bits-1:0] state;
      if (known == 0) begin : first
        assign state = first_state;
      end else begin : next
        xfc_divlong_digit #(width) digit (sysclk, enable, after[known-1].state, state);
      end
    end
  endgenerate
  xfc_registers #(1, width) digit_0 (sysclk, enable, negate_early, negate);
  wire [width:0] left;
  wire [width-1:0] divisor, digits_but_last;
  assign {left, divisor, digits_but_last} = after[width].state;

  // restore
  wire [width-1:0] restored = left[width-1:0] + (divisor & {width{left[width]}});
  wire [width-1:0] quotient = {digits_but_last[width-2:0], !left[width]};
  wire unused_digit = &{1'b0, digits_but_last[width-1]};
  wire [width-1:0] result_d = remainder == 1 ? restored : quotient;

  wire [width-1:0] result;
  wire negative;
  xfc_register #(width, 1) restore_0 (sysclk, enable, result_d, result);
  xfc_register #(1, 1) restore_1 (sysclk, enable, negate, negative);

  // sign
  wire [width-1:0] signed_d = (result ^ {width{negative}}) + {{width-1{1'b0}}, negative};

  xfc_register #(width, 1) sign_0 (sysclk, enable, signed_d, cc);
endmodule
