// Compares two IEEE doubles: equal, not equal, less, less or equal, greater, greater or equal for relation 0 to 5.
// Exact. -0 equals +0, subnormal numbers are zeros; a nan is not equal to anything and nothing else.
//   step halves:  both halves of exponent and fraction, nan and zero
//   step relate:  the relation from what the halves and the signs say
// Latency 2 cycles: a register behind each step.
module xfc_cmpd
  #(parameter relation = 0)
  (input sysclk, reset, enable,
   input [64:1] aa,
   input [64:1] bb,
   output cc);

  generate
    if (relation < 0 || relation > 5)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 11;
  localparam fraction_bits = 52;
  localparam halves_border = 1;

  // halves
  wire [8:0] marks_d;
  xfc_ieee_halves #(exponent_bits, fraction_bits) halves (aa, bb, marks_d);

  wire [8:0] marks;   // signs, nan, both zero, halves
  xfc_register #(9, halves_border) halves_0 (sysclk, enable, marks_d, marks);

  // relate
  wire below, same, holds_d;
  wire unordered = marks[6] | marks[5];
  xfc_ieee_below relate_below (marks[8:7], marks[3:0], below, same);
  wire equal = !unordered & (marks[4] | same);
  wire less = !unordered & !marks[4] & below;
  xfc_relation #(relation) relate_holds (unordered, equal, less, holds_d);

  xfc_register #(1, 1) relate_0 (sysclk, enable, holds_d, cc);
endmodule
