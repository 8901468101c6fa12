// Whether IEEE number a stands before b when -0 stands before +0, and whether both have the same bits; for numbers and
// zeros, whose halves xfc_ieee_halves compared. Of two subnormal numbers of one sign either may be below.
module xfc_ieee_below
  (input [1:0] negative,   // a, b
   input [3:0] halves,     // upper half less, equal, lower half less, equal
   output below, same);

  wire less = halves[3] | (halves[2] & halves[1]);
  wire equal = halves[2] & halves[0];
  wire greater = !less & !equal;
  wire signs_differ = negative[1] ^ negative[0];
  assign below = signs_differ ? negative[1] : (negative[1] ? greater : less);
  assign same = equal & !signs_differ;
endmodule
