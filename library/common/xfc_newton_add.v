// The end of a Newton step for a fraction behind the point: a guess, more by its product with its relative error,
// rounded to `kept_bits`: half a unit of these is added, and the lower bits are dropped.
//   step correct:  guess times error
//   step add:      both, and half a unit, which stands where the guess has no bits
// The guess comes a cycle before the error. Behind that it takes a cycle for each bit of `borders`, told at
// xfc_unsigned_product, and one more.
module xfc_newton_add
  #(parameter guess_bits = 32,   // behind the point
    parameter error_bits = 32,   // at most 64
    parameter rise_bits  = 32,   // of guess times error, that are kept
    parameter sum_bits   = 60,   // behind the point
    parameter kept_bits  = 53,   // of the sum
    parameter borders = 0,
    parameter blocks  = 0)
  (input sysclk, enable,
   input [guess_bits-1:0] early_guess,
   input [error_bits-1:0] error,
   output [kept_bits:0] rounded);   // one bit before the point

  localparam cycles = (borders & 1) + (borders >> 1 & 1) + (borders >> 2 & 1) + (borders >> 3 & 1) +
                      (borders >> 4 & 1) + (borders >> 5 & 1);
  localparam dropped_bits = sum_bits - kept_bits;

  // correct
  wire [guess_bits+error_bits-1:0] rise;
  xfc_early_product #(guess_bits, error_bits, borders, blocks) correct (sysclk, enable, early_guess, error, rise);
  wire unused_rise = &{1'b0, rise[guess_bits+error_bits-rise_bits-1:0]};

  wire [guess_bits-1:0] guess;
  xfc_registers #(guess_bits, cycles + 1) correct_0 (sysclk, enable, early_guess, guess);

  // add
  wire [sum_bits:0] sum_d =
    {1'b0, guess, {sum_bits-guess_bits-dropped_bits{1'b0}}, 1'b1, {dropped_bits-1{1'b0}}} +
    {{sum_bits+1-rise_bits{1'b0}}, rise[guess_bits+error_bits-1:guess_bits+error_bits-rise_bits]};
  wire unused_sum = &{1'b0, sum_d[dropped_bits-1:0]};

  xfc_register #(kept_bits + 1, 1) add_0 (sysclk, enable, sum_d[sum_bits:dropped_bits], rounded);
endmodule
