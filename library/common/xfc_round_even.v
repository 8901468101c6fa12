// Says whether a value that loses its `dropped` bits is rounded up to the nearest, to even between two.
// With `complemented` the value is one low unit below the one that is rounded, as the ones' complement of a negative
// number is: then its unit and the rounding share the one carry chain behind.
module xfc_round_even
  #(parameter width = 7)   // bits that are dropped, at least 2
  (input lowest,           // the lowest bit that is kept
   input [width-1:0] dropped,
   input complemented,
   output up);

  wire half = dropped[width-1];
  wire rest_is_zero = !(|dropped[width-2:0]);
  wire rest_is_ones = &dropped[width-2:0];
  assign up = complemented ? (half | (lowest & rest_is_ones)) : (half & (lowest | !rest_is_zero));
endmodule
