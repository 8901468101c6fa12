// The reciprocal of an IEEE double, within 0.52 ulp. Subnormal operands and results are zero, 1 / 0 is infinite, both
// with the operand's sign.
//   step look_up:   coefficients of the significand's segment, 1 / m being level - slope * u + curve * u ** 2
//   step bend:      slope less curve times position
//   step fall:      level less that times position: a guess of 1 / m, too small by less than 2 ** -29
//   step residual:  significand times guess; what that lacks of 1 is the guess's relative error
//   step correct:   guess times error
//   step add:       both, and half a unit of the result, so that the lower bits are dropped
//   step pack:      the value of 2 goes into the exponent; marks
// Latency 20 + 2 doublespeed + (roundconvert - device) (1 + doublespeed) cycles, 18 to 24: the more there are, the more
// borders the products have. The generics change no result. README.md has the bound of the error.
module dp_inv
  #(parameter roundconvert   = 0,
    parameter doubleaccuracy = 1,
    parameter doublespeed    = 0,
    parameter device         = 0,
    parameter synthesize     = 0)
  (input sysclk, reset, enable,
   input signin,
   input [11:1] exponentin,
   input [52:1] mantissain,
   output signout,
   output [11:1] exponentout,
   output [52:1] mantissaout);

  generate
    if (roundconvert < 0 || roundconvert > 1 || doubleaccuracy < 0 || doubleaccuracy > 1 || doublespeed < 0 ||
        doublespeed > 1 || device < 0 || device > 2 || synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 11;
  localparam fraction_bits = 52;
  localparam significand_bits = fraction_bits + 1;
  localparam wide_bits = exponent_bits + 2;         // exponent below zero
  localparam mark_bits = 4;                         // sign, nan, zip, sat
  localparam segment_bits = 9;
  localparam position_bits = 25;                    // those that count
  localparam short_bits = 16;                       // of these for the curve
  localparam level_bits = 34;                       // behind the point
  localparam slope_bits = 25;
  localparam curve_bits = 16;
  localparam row_bits = level_bits + slope_bits + curve_bits;
  localparam guess_bits = 32;                       // of the level, that are kept
  localparam product_bits = significand_bits + guess_bits;
  localparam error_bits = 32;
  localparam error_low = 23;                        // lowest bit of the product that counts
  localparam rise_bits = 31;                        // of guess times error, that are kept
  localparam sum_bits = 60;                         // behind the point

  // Cycles beyond the fewest go behind levels of the products' trees that had no register of their own.
  localparam extra = (roundconvert - device) * (doublespeed + 1) + 2 * doublespeed + 2;
  localparam bend_borders = 10 + (extra > 1 ? 4 : 0) + (extra > 5 ? 1 : 0);
  localparam bend_cycles = 2 + (extra > 1 ? 1 : 0) + (extra > 5 ? 1 : 0);
  localparam fall_borders = 22 + (extra > 0 ? 8 : 0) + (extra > 4 ? 1 : 0);
  localparam fall_cycles = 3 + (extra > 0 ? 1 : 0) + (extra > 4 ? 1 : 0);
  localparam residual_borders = 30 + (extra > 2 ? 1 : 0);
  localparam residual_cycles = 4 + (extra > 2 ? 1 : 0);
  localparam correct_borders = 30 + (extra > 3 ? 1 : 0);
  localparam correct_cycles = 4 + (extra > 3 ? 1 : 0);
  localparam guess_cycle = 1 + bend_cycles + 1 + fall_cycles + 1;   // from here on the guess is known
  localparam add_cycle = guess_cycle + residual_cycles + correct_cycles;

  // look_up
  wire [row_bits-1:0] row_d, row;
  dp_inv_table coefficients (mantissain[fraction_bits:fraction_bits-segment_bits+1], row_d);
  wire [position_bits-1:0] position = mantissain[fraction_bits-segment_bits:fraction_bits-segment_bits-position_bits+1];
  wire zero = exponentin == 0;
  wire top = &exponentin;
  wire [mark_bits-1:0] marks_d = {signin, top & (|mantissain), top, zero};

  wire [mark_bits-1:0] pack_marks;
  wire [exponent_bits-1:0] pack_exponent;
  wire [fraction_bits-1:0] early_fraction;
  xfc_register #(row_bits, 1) look_up_0 (sysclk, enable, row_d, row);
  xfc_registers #(mark_bits, add_cycle + 1) look_up_1 (sysclk, enable, marks_d, pack_marks);
  xfc_registers #(exponent_bits, add_cycle + 1) look_up_2 (sysclk, enable, exponentin, pack_exponent);
  xfc_registers #(fraction_bits, guess_cycle - 1) look_up_3 (sysclk, enable, mantissain, early_fraction);

  // bend, fall
  wire [level_bits-1:0] level;
  xfc_quadratic #(position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, synthesize)
    fall (sysclk, enable, position, row, level);
  wire [guess_bits-1:0] guess = level[level_bits-1:level_bits-guess_bits];
  wire unused_level = &{1'b0, level[level_bits-guess_bits-1:0]};

  // residual: what the bits of the product from error_low on lack of 1, less one unit at most
  wire [product_bits-1:0] product;
  xfc_early_product #(significand_bits, guess_bits, residual_borders, synthesize) residual
    (sysclk, enable, {1'b1, early_fraction}, guess, product);
  wire [error_bits-1:0] error = ~product[error_low+error_bits-1:error_low];
  wire unused_product = &{1'b0, product[product_bits-1:error_low+error_bits], product[error_low-1:0]};

  wire [guess_bits-1:0] early_guess;
  xfc_registers #(guess_bits, residual_cycles - 1) residual_0 (sysclk, enable, guess, early_guess);

  // correct, add
  wire [significand_bits:0] rounded;
  xfc_newton_add #(guess_bits, error_bits, rise_bits, sum_bits, significand_bits, correct_borders, synthesize) add
    (sysclk, enable, early_guess, error, rounded);
  wire two = rounded[significand_bits];
  wire [fraction_bits-1:0] fraction = rounded[fraction_bits-1:0];
  wire unused_hidden = &{1'b0, rounded[fraction_bits]};

  // pack
  wire [wide_bits-1:0] result_exponent = 13'd2045 - {2'b00, pack_exponent} + {{wide_bits-1{1'b0}}, two};
  wire [exponent_bits+fraction_bits:0] packed_d;
  xfc_pack_ieee #(exponent_bits, fraction_bits, wide_bits) pack_result
    (result_exponent, fraction, pack_marks, packed_d);

  xfc_register #(1 + exponent_bits + fraction_bits, 1) pack_0
    (sysclk, enable, packed_d, {signout, exponentout, mantissaout});
endmodule
