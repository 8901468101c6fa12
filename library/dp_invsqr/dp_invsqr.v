// One over the square root of an IEEE double, within 0.57 ulp. Subnormal operands are zero; zero gives infinity with
// its sign, infinity gives 0, a negative operand nan.
//   step arrive:    the operand, in cycles that the steps behind have no use for
//   step look_up:   coefficients of the segment: 1 / sqrt(m), or 1 / sqrt(2 m) below an odd power of two, is
//                   level - slope * u + curve * u ** 2
//   step bend:      slope less curve times position
//   step fall:      level less that times position: a guess of the root's reciprocal, too small by less than 2 ** -28
//   step root:      significand times guess
//   step residual:  that times guess; what it lacks of 1 is twice the guess's relative error
//   step correct:   guess times error
//   step add:       both, and half a unit of the result, so that the lower bits are dropped
//   step pack:      the value of 2 goes into the exponent; marks
// Latency 32 + 2 doublespeed - device (1 + doublespeed) cycles, 30 to 34. The generics change no result. README.md has
// the bound of the error.
module dp_invsqr
  #(parameter doubleaccuracy = 1,
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
    if (doubleaccuracy < 0 || doubleaccuracy > 1 || doublespeed < 0 || doublespeed > 1 || device < 0 || device > 2 ||
        synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 11;
  localparam fraction_bits = 52;
  localparam significand_bits = fraction_bits + 1;
  localparam wide_bits = exponent_bits + 2;         // as xfc_pack_ieee asks for
  localparam mark_bits = 4;                         // sign, nan, zip, sat
  localparam segment_bits = 8;                      // without the parity
  localparam position_bits = 25;                    // those that count
  localparam short_bits = 17;                       // of these for the curve
  localparam level_bits = 34;                       // behind the point
  localparam slope_bits = 25;
  localparam curve_bits = 17;
  localparam row_bits = level_bits + slope_bits + curve_bits;
  localparam guess_bits = 32;                       // of the level, that are kept
  localparam significand_product_bits = significand_bits + guess_bits;
  localparam root_bits = 64;                        // of these, that are kept
  localparam product_bits = root_bits + guess_bits;
  localparam error_bits = 32;
  localparam error_low = 36;                        // lowest bit of the product that counts
  localparam rise_bits = 32;                        // of guess times error, that are kept
  localparam sum_bits = 60;                         // behind the point

  localparam extra = (2 - device) * (doublespeed + 1);
  localparam arrive_cycles = extra > 1 ? extra - 1 : 0;
  localparam bend_borders = 31;
  localparam bend_cycles = 5;
  localparam fall_borders = 31;
  localparam fall_cycles = 5;
  localparam root_borders = 30 + (extra > 0 ? 1 : 0);
  localparam root_cycles = 4 + (extra > 0 ? 1 : 0);
  localparam residual_borders = 63;
  localparam residual_cycles = 6;
  localparam correct_borders = 31;
  localparam correct_cycles = 5;
  localparam guess_cycle = 1 + bend_cycles + 1 + fall_cycles + 1;   // from here on the guess is known
  localparam error_cycle = guess_cycle + root_cycles + residual_cycles;
  localparam add_cycle = error_cycle + correct_cycles;

  // arrive
  wire sign;
  wire [exponent_bits-1:0] exponent;
  wire [fraction_bits-1:0] arrived_fraction;
  xfc_registers #(1 + exponent_bits + fraction_bits, arrive_cycles) arrive_0
    (sysclk, enable, {signin, exponentin, mantissain}, {sign, exponent, arrived_fraction});

  // look_up: an even power of two has an odd exponent field
  wire zero = exponent == 0;
  wire top = &exponent;
  wire [mark_bits-1:0] marks_d = {sign, (top & (|arrived_fraction)) | (sign & !zero), top, zero};
  wire odd_d = !exponent[0];
  wire [row_bits-1:0] row_d, row;
  dp_invsqr_table coefficients ({odd_d, arrived_fraction[fraction_bits-1:fraction_bits-segment_bits]}, row_d);
  wire [position_bits-1:0] position =
    arrived_fraction[fraction_bits-segment_bits-1:fraction_bits-segment_bits-position_bits];
  wire [exponent_bits:0] twice_d = 12'd3068 - {1'b0, exponent};

  wire [mark_bits-1:0] pack_marks;
  wire [exponent_bits-1:0] pack_exponent;
  wire [fraction_bits-1:0] early_fraction;
  wire odd;
  xfc_register #(row_bits, 1) look_up_0 (sysclk, enable, row_d, row);
  xfc_registers #(mark_bits, add_cycle + 1) look_up_1 (sysclk, enable, marks_d, pack_marks);
  xfc_registers #(exponent_bits, add_cycle + 1) look_up_2 (sysclk, enable, twice_d[exponent_bits:1], pack_exponent);
  xfc_registers #(fraction_bits, guess_cycle - 1) look_up_3 (sysclk, enable, arrived_fraction, early_fraction);
  xfc_registers #(1, error_cycle) look_up_4 (sysclk, enable, odd_d, odd);
  wire unused_half = &{1'b0, twice_d[0]};

  // bend, fall
  wire [level_bits-1:0] level;
  xfc_quadratic #(position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, synthesize)
    fall (sysclk, enable, position, row, level);
  wire [guess_bits-1:0] guess = level[level_bits-1:level_bits-guess_bits];
  wire unused_level = &{1'b0, level[level_bits-guess_bits-1:0]};

  // root
  wire [significand_product_bits-1:0] significand_product;
  xfc_early_product #(significand_bits, guess_bits, root_borders, synthesize) root_product
    (sysclk, enable, {1'b1, early_fraction}, guess, significand_product);
  wire [root_bits-1:0] root =
    significand_product[significand_product_bits-1:significand_product_bits-root_bits];
  wire unused_root = &{1'b0, significand_product[significand_product_bits-root_bits-1:0]};

  wire [guess_bits-1:0] root_guess;
  xfc_registers #(guess_bits, root_cycles - 1) root_0 (sysclk, enable, guess, root_guess);

  // residual: what the bits of the product from error_low on lack of 1, less one unit at most
  wire [product_bits-1:0] product;
  xfc_early_product #(guess_bits, root_bits, residual_borders, synthesize) residual
    (sysclk, enable, root_guess, root, product);
  wire [error_bits-1:0] error =
    odd ? ~product[error_low+error_bits-2:error_low-1] : ~product[error_low+error_bits-1:error_low];
  wire unused_product = &{1'b0, product[product_bits-1:error_low+error_bits], product[error_low-2:0]};

  wire [guess_bits-1:0] early_guess;
  xfc_registers #(guess_bits, residual_cycles) residual_0 (sysclk, enable, root_guess, early_guess);

  // correct, add
  wire [significand_bits:0] rounded;
  xfc_newton_add #(guess_bits, error_bits, rise_bits, sum_bits, significand_bits, correct_borders, synthesize) add
    (sysclk, enable, early_guess, error, rounded);
  wire two = rounded[significand_bits];
  wire [fraction_bits-1:0] fraction = rounded[fraction_bits-1:0];
  wire unused_hidden = &{1'b0, rounded[fraction_bits]};

  // pack
  wire [wide_bits-1:0] result_exponent = {2'b00, pack_exponent} + {{wide_bits-1{1'b0}}, two};
  wire [exponent_bits+fraction_bits:0] packed_d;
  xfc_pack_ieee #(exponent_bits, fraction_bits, wide_bits) pack_result
    (result_exponent, fraction, pack_marks, packed_d);

  xfc_register #(1 + exponent_bits + fraction_bits, 1) pack_0
    (sysclk, enable, packed_d, {signout, exponentout, mantissaout});
endmodule
