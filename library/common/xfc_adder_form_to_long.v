// Converts a value in an internal adder form to an integer of 32 bits, toward zero as C does. Out of range it is the
// nearest end, nan is 0. Exponent field 0 is zero.
//   step place:     a window for the integer's bits and 31 behind them, shifted by no, one or two words
//   step coarse:    shift right by whole bytes
//   step fine:      shift right by single bits, with what goes over the edge
//   step truncate:  toward zero is one more for a negative number that lost bits
//   step settle:    the ends of the range
// 2 cycles with a register behind fine and settle, and one for each further border.
module xfc_adder_form_to_long
  #(parameter exponent_bits          = 13,
    parameter exponent_without_shift = 1112,   // with it the mantissa's lowest bit is worth 2 ** 31
    parameter place_border           = 1,      // 1: a register behind that step
    parameter coarse_border          = 0,
    parameter truncate_border        = 0)
  (input sysclk, enable,
   input [63:0] mantissa_in,
   input [exponent_bits-1:0] exponent,
   input [2:0] flags,                          // nan, zip, sat
   output [31:0] settled);

  localparam mantissa_bits = 64;
  localparam width = 32;
  localparam window_bits = 2 * width - 1;
  localparam [31:0] first_exponent = exponent_without_shift;

  // place
  wire sign_in = mantissa_in[mantissa_bits-1];
  wire [exponent_bits:0] distance = first_exponent[exponent_bits:0] - {1'b0, exponent};   // two's complement
  wire negative_distance = distance[exponent_bits];
  wire no_words = distance[exponent_bits:5] == 0;
  wire one_word = distance[exponent_bits:5] == 1;
  wire two_words = distance[exponent_bits:5] == 2;
  wire [window_bits-1:0] window_d =
    no_words ? {mantissa_in[width-1:0], {width-1{1'b0}}} :
    one_word ? mantissa_in[mantissa_bits-1:1] :
    two_words ? {{width{sign_in}}, mantissa_in[mantissa_bits-1:width+1]} : {window_bits{1'b0}};
  wire lost_d = one_word ? mantissa_in[0] : two_words & (mantissa_in[width:0] != 0);
  wire fits = (mantissa_in[mantissa_bits-1:width-1] == 0) | (&mantissa_in[mantissa_bits-1:width-1]);
  wire beyond_d = flags[0] | (negative_distance & (mantissa_in != 0)) | (no_words & !fits);
  wire zero = flags[2] | (!flags[0] & (flags[1] | (exponent == 0)));
  wire [2:0] marks_d = {sign_in, zero, beyond_d};

  wire [window_bits-1:0] window;
  wire lost;
  wire [4:0] rest;
  wire [2:0] marks;   // sign, zero, beyond the range
  xfc_register #(window_bits, place_border) place_0 (sysclk, enable, window_d, window);
  xfc_register #(1, place_border) place_1 (sysclk, enable, lost_d, lost);
  xfc_register #(5, place_border) place_2 (sysclk, enable, distance[4:0], rest);
  xfc_register #(3, place_border) place_3 (sysclk, enable, marks_d, marks);

  // coarse
  wire [window_bits-1:0] coarse_d;
  wire coarse_lost_d;
  xfc_shift_right #(window_bits, 2, 8) shift_coarse (window, rest[4:3], lost, coarse_d, coarse_lost_d);

  wire [window_bits-1:0] coarse;
  wire coarse_lost;
  wire [2:0] fine_rest;
  wire [2:0] coarse_marks;
  xfc_register #(window_bits, coarse_border) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(1, coarse_border) coarse_1 (sysclk, enable, coarse_lost_d, coarse_lost);
  xfc_register #(3, coarse_border) coarse_2 (sysclk, enable, rest[2:0], fine_rest);
  xfc_register #(3, coarse_border) coarse_3 (sysclk, enable, marks, coarse_marks);

  // fine
  wire [window_bits-1:0] fine_d;
  wire fine_lost;
  xfc_shift_right #(window_bits, 3, 1) shift_fine (coarse, fine_rest, coarse_lost, fine_d, fine_lost);
  wire up_d = coarse_marks[2] & fine_lost;

  wire [window_bits-1:0] shifted;
  wire up;
  wire [2:0] fine_marks;
  xfc_register #(window_bits, 1) fine_0 (sysclk, enable, fine_d, shifted);
  xfc_register #(1, 1) fine_1 (sysclk, enable, up_d, up);
  xfc_register #(3, 1) fine_2 (sysclk, enable, coarse_marks, fine_marks);

  // truncate
  wire [width-1:0] whole_d = shifted[width-1:0] + {{width-1{1'b0}}, up};
  wire in_range = (shifted[window_bits-1:width-1] == 0) | (&shifted[window_bits-1:width-1]);
  wire [2:0] truncate_marks_d = {fine_marks[2:1], fine_marks[0] | !in_range};

  wire [width-1:0] whole;
  wire [2:0] truncate_marks;
  xfc_register #(width, truncate_border) truncate_0 (sysclk, enable, whole_d, whole);
  xfc_register #(3, truncate_border) truncate_1 (sysclk, enable, truncate_marks_d, truncate_marks);

  // settle
  wire [width-1:0] settled_d =
    truncate_marks[1] ? {width{1'b0}} :
    truncate_marks[0] ? {truncate_marks[2], {width-1{!truncate_marks[2]}}} : whole;

  xfc_register #(width, 1) settle_0 (sysclk, enable, settled_d, settled);
endmodule
