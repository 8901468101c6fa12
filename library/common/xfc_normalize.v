// Brings the highest 1 of a value to the front. At least one copy of `fill` is put behind the value, which makes whole
// bytes; copies of it come in from the right. A value of nothing but zeros counts all bits but the last.
//   step bytes:   how many bytes in front are empty
//   step coarse:  shift left by so many bytes
//   step bits:    zeros in front of the first byte
//   step fine:    shift left by so many bits
// A border of 1 is a register behind the step of its name; what is given beside the value keeps step with it.
module xfc_normalize
  #(parameter width = 63,   // bits of the value, 8 to 63
    parameter side  = 1,    // bits beside the value
    parameter bytes_border = 0, coarse_border = 0, bits_border = 0, fine_border = 0)
  (input sysclk, enable,
   input [width-1:0] value,
   input fill,
   input [side-1:0] beside,
   output [8*(width/8+1)-1:0] normal,
   output [5:0] zeros,
   output [side-1:0] passed);

  localparam blocks = width / 8 + 1;
  localparam padded = 8 * blocks;

  // bytes
  wire [padded-1:0] bytes_value_d = {value, {padded-width{fill}}};
  wire [side:0] bytes_side_d = {fill, beside};
  wire [blocks-2:0] used;
  genvar i;
  generate
    for (i = 1; i < blocks; i = i + 1) begin : block
      assign used[i-1] = |bytes_value_d[8*i+7:8*i];
    end
  endgenerate
  wire [2:0] bytes_d;
  xfc_leading_zeros #(blocks - 1, 3) count_bytes (used, bytes_d);

  wire [padded-1:0] bytes_value;
  wire [side:0] bytes_side;
  wire [2:0] bytes;
  xfc_register #(padded, bytes_border) bytes_0 (sysclk, enable, bytes_value_d, bytes_value);
  xfc_register #(side + 1, bytes_border) bytes_1 (sysclk, enable, bytes_side_d, bytes_side);
  xfc_register #(3, bytes_border) bytes_2 (sysclk, enable, bytes_d, bytes);

  // coarse
  wire [padded-1:0] coarse_d;
  xfc_shift_left #(padded, 3, 8) shift_coarse (bytes_value, bytes, bytes_side[side], coarse_d);

  wire [padded-1:0] coarse;
  wire [side:0] coarse_side;
  wire [2:0] coarse_bytes;
  xfc_register #(padded, coarse_border) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(side + 1, coarse_border) coarse_1 (sysclk, enable, bytes_side, coarse_side);
  xfc_register #(3, coarse_border) coarse_2 (sysclk, enable, bytes, coarse_bytes);

  // bits
  wire [2:0] bits_d;
  xfc_leading_zeros #(7, 3) count_bits (coarse[padded-1:padded-7], bits_d);

  wire [padded-1:0] bits_value;
  wire [side:0] bits_side;
  wire [5:0] bits_zeros;
  xfc_register #(padded, bits_border) bits_0 (sysclk, enable, coarse, bits_value);
  xfc_register #(side + 1, bits_border) bits_1 (sysclk, enable, coarse_side, bits_side);
  xfc_register #(6, bits_border) bits_2 (sysclk, enable, {coarse_bytes, bits_d}, bits_zeros);

  // fine
  wire [padded-1:0] normal_d;
  xfc_shift_left #(padded, 3, 1) shift_fine (bits_value, bits_zeros[2:0], bits_side[side], normal_d);

  xfc_register #(padded, fine_border) fine_0 (sysclk, enable, normal_d, normal);
  xfc_register #(side, fine_border) fine_1 (sysclk, enable, bits_side[side-1:0], passed);
  xfc_register #(6, fine_border) fine_2 (sysclk, enable, bits_zeros, zeros);
endmodule
