// The digits in base 4 of -(floor + half), each as its value plus 1; with the highest bit the last one, of code 3, is
// -2. Between 43 and -43 it is not, so the sign of what floor was taken of does.
module xfc_divfp2x_codes
  (input negative,        // what floor was taken of
   input [7:0] floor,     // two's complement
   input half,
   output [8:0] codes);

  wire [8:0] sum = {~floor, !half} + 9'b010101011;   // minus floor is its complement and 1
  wire unused = sum[0];
  assign codes = {!negative & sum[8] & sum[7], sum[8:1]};
endmodule
