// low + (high + carry) * 2 ** shift, two's complement: the bits of `low` below the shift pass by, one carry chain does
// the rest.
module xfc_add_shifted
  #(parameter width    = 33,   // bits of both, more than shift
    parameter shift    = 2,
    parameter sum_bits = 36)   // enough for the sum, at least width + shift
  (input [width-1:0] low,
   input [width-1:0] high,
   input carry,
   output [sum_bits-1:0] sum);

  localparam chain_bits = sum_bits - shift + 1;   // the carry comes from a bit below
  wire [chain_bits-1:0] augend = {{sum_bits-width{low[width-1]}}, low[width-1:shift], 1'b1};
  wire [chain_bits-1:0] addend = {{sum_bits-shift-width+1{high[width-1]}}, high[width-2:0], carry};
  wire [chain_bits-1:0] chain = augend + addend;
  wire unused = &{1'b0, chain[0]};
  assign sum = {chain[chain_bits-1:1], low[shift-1:0]};
endmodule
