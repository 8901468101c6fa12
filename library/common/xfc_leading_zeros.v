// Counts the zeros in front of the highest 1; a value of zero counts all its bits. Blocks of 1, 2, 4, ... bits know
// whether they are empty and where their highest 1 stands; two neighbours make the next.
module xfc_leading_zeros
  #(parameter width  = 31,   // bits of the value, below 2 ** levels
    parameter levels = 5)    // bits of the count
  (input [width-1:0] value,
   output reg [levels-1:0] count);

  localparam size = 1 << levels;

  // What is known of a block stands at its lowest bit: empty, and bit j of the count at j * size further.
  reg [size-1:0] empty;
  reg [levels*size-1:0] position;
  integer level, block_index, low, high, i, j;

  always @* begin : search
    // A 1 behind the last bit ends the count of a value of zero.
    empty = {size{1'b0}};
    position = {levels*size{1'b0}};
    low = 0;
    high = 0;
    for (i = 0; i < width; i = i + 1)
      empty[size-width+i] = !value[i];
    for (level = 0; level < levels; level = level + 1)
      for (block_index = 0; block_index < (1 << (levels - level - 1)); block_index = block_index + 1) begin
        low = block_index * (2 << level);
        high = low + (1 << level);
        for (j = 0; j < level; j = j + 1)
          if (!empty[high]) position[j*size+low] = position[j*size+high];
        position[level*size+low] = empty[high];
        empty[low] = empty[high] & empty[low];
      end
    for (j = 0; j < levels; j = j + 1)
      count[j] = position[j*size];
  end
endmodule
