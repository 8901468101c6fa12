// Rounds an IEEE number to an integer: down, up, toward zero, to nearest with halves away from zero for rounding 0 to
// 3. Exact; the sign stays, of a zero too. Subnormal numbers are zeros, infinities stay, nan is the quiet one.
//   step place:  the bits of the fraction that are worth less than 1
//   step cut:    without them; whether one unit comes to the magnitude. Below 1 the number becomes 1/2
//   step lower:  the unit and the lower half of the sum
//   step upper:  the upper half, which carries into the exponent; zeros and nan
// 3 cycles with a register behind place, cut and upper, 4 with lower_border.
module xfc_round_ieee
  #(parameter exponent_bits = 8,
    parameter fraction_bits = 23,
    parameter rounding      = 0,
    parameter lower_border  = 0)   // 1: a register behind lower
  (input sysclk, enable,
   input [exponent_bits+fraction_bits:0] number,
   output [exponent_bits+fraction_bits:0] rounded);

  localparam width = exponent_bits + fraction_bits;   // of the magnitude
  localparam lower_bits = (width + 1) / 2;
  localparam upper_bits = width - lower_bits;
  localparam places_bits = fraction_bits < 32 ? 5 : 6;
  localparam [exponent_bits-1:0] bias = {exponent_bits{1'b1}} >> 1;
  localparam [exponent_bits-1:0] bias_of_halves = bias - 1;
  localparam [exponent_bits-1:0] first_whole = bias + fraction_bits;

  // place
  wire [exponent_bits-1:0] exponent = number[width-1:fraction_bits];
  wire [fraction_bits-1:0] fraction = number[fraction_bits-1:0];
  wire [places_bits-1:0] places = exponent[places_bits-1:0] + {{places_bits-1{1'b0}}, 1'b1};   // the bias ends in ones
  wire below_one = exponent < bias;
  wire whole = exponent >= first_whole;
  wire [fraction_bits-1:0] mask_d =
    below_one ? {fraction_bits{1'b1}} : whole ? {fraction_bits{1'b0}} : {fraction_bits{1'b1}} >> places;
  wire is_nan = (&exponent) & (fraction != 0);
  wire [3:0] marks_d = {is_nan, below_one, exponent != 0, exponent == bias_of_halves};

  wire [width:0] placed;
  wire [fraction_bits-1:0] mask;
  wire [3:0] marks;   // nan, below one, not zero, from 1/2 to 1
  xfc_register #(width + 1, 1) place_0 (sysclk, enable, number, placed);
  xfc_register #(fraction_bits, 1) place_1 (sysclk, enable, mask_d, mask);
  xfc_register #(4, 1) place_2 (sysclk, enable, marks_d, marks);

  // cut
  wire sign = placed[width];
  wire [fraction_bits-1:0] cut_bits = placed[fraction_bits-1:0] & mask;
  wire [fraction_bits-1:0] highest_cut = mask & ~(mask >> 1);
  wire any = marks[2] ? marks[1] : |cut_bits;
  wire half = marks[2] ? marks[0] : |(placed[fraction_bits-1:0] & highest_cut);
  wire up_d = rounding == 0 ? sign & any : rounding == 1 ? !sign & any : rounding == 2 ? 1'b0 : half;
  wire [width-1:0] kept_d = {marks[2] ? bias_of_halves : placed[width-1:fraction_bits],
                             placed[fraction_bits-1:0] & ~mask};
  wire [fraction_bits:0] unit_d = {mask, 1'b1} & ~{1'b0, mask};
  wire [2:0] cut_marks_d = {sign, marks[3:2]};

  wire [width-1:0] kept;
  wire [fraction_bits:0] unit;
  wire up;
  wire [2:0] cut_marks;   // sign, nan, below one
  xfc_register #(width, 1) cut_0 (sysclk, enable, kept_d, kept);
  xfc_register #(fraction_bits + 1, 1) cut_1 (sysclk, enable, unit_d, unit);
  xfc_register #(1, 1) cut_2 (sysclk, enable, up_d, up);
  xfc_register #(3, 1) cut_3 (sysclk, enable, cut_marks_d, cut_marks);

  // lower
  wire [width-1:0] addend = {{exponent_bits-1{1'b0}}, unit & {fraction_bits+1{up}}};
  wire [lower_bits:0] lower_d = {1'b0, kept[lower_bits-1:0]} + {1'b0, addend[lower_bits-1:0]};
  wire [2:0] lower_marks_d = {cut_marks[2:1], cut_marks[0] & !up};

  wire [lower_bits:0] lower;
  wire [upper_bits-1:0] upper_kept, upper_addend;
  wire [2:0] lower_marks;   // sign, nan, zero
  xfc_register #(lower_bits + 1, lower_border) lower_0 (sysclk, enable, lower_d, lower);
  xfc_register #(upper_bits, lower_border) lower_1 (sysclk, enable, kept[width-1:lower_bits], upper_kept);
  xfc_register #(upper_bits, lower_border) lower_2 (sysclk, enable, addend[width-1:lower_bits], upper_addend);
  xfc_register #(3, lower_border) lower_3 (sysclk, enable, lower_marks_d, lower_marks);

  // upper
  wire [upper_bits-1:0] upper = upper_kept + upper_addend + {{upper_bits-1{1'b0}}, lower[lower_bits]};
  wire [width:0] rounded_d =
    lower_marks[1] ? {1'b0, {exponent_bits+1{1'b1}}, {fraction_bits-1{1'b0}}} :
    {lower_marks[2], lower_marks[0] ? {width{1'b0}} : {upper, lower[lower_bits-1:0]}};

  xfc_register #(width + 1, 1) upper_0 (sysclk, enable, rounded_d, rounded);
endmodule
