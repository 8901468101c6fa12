// The product of two numbers in two's complement, exact. One of them is recoded into digits of two bits from -1 to 2
// (the highest one from -2 to 2): a digit of b + 0101...01 is the digit of b plus the carry that it takes, plus 1. Rows
// are added in blocks of four digits, blocks in pairs, pairs in quads, and quads at last. With synthesize 1 it is one
// product that tools put into multiplier blocks, with the same borders.
//   step recode:  digits of b; the lowest row, whose digit takes no carry
//   step choose:  the rows
//   step twos:    the sums of two rows
//   step rows:    the sum of four rows for each block
//   step pairs:   the sum of two blocks
//   step quads:   the sum of two pairs
//   step all:     the sum of both quads
module xfc_product
  #(parameter width = 32,           // bits of both, even, 4 to 64
    parameter synthesize = 0,
    parameter recode_border = 1,    // 1: a register behind the step
    parameter rows_border = 1,
    parameter pairs_border = 0,
    parameter quads_border = 0,
    parameter twos_border = 0,
    parameter choose_border = 0)
  (input sysclk, enable,
   input [width-1:0] a,
   input [width-1:0] b,
   output [2*width-1:0] product);

  localparam digits = width / 2;
  localparam blocks = (digits + 3) / 4;
  localparam block_bits = width + 8;
  localparam pair_bits = width + 16;
  localparam quad_bits = width + 32;
  genvar i;

  generate
    if (synthesize == 1) begin : multiplier_blocks
      wire [width-1:0] recode_a, recode_b;
      xfc_register #(width, recode_border) recode_0 (sysclk, enable, a, recode_a);
      xfc_register #(width, recode_border) recode_1 (sysclk, enable, b, recode_b);
      wire [width-1:0] choose_a, choose_b;
      xfc_register #(width, choose_border) choose_0 (sysclk, enable, recode_a, choose_a);
      xfc_register #(width, choose_border) choose_1 (sysclk, enable, recode_b, choose_b);
      wire [2*width-1:0] product_d = $signed(choose_a) * $signed(choose_b);
      wire [2*width-1:0] twos_product, rows_product, pairs_product;
      xfc_register #(2 * width, twos_border) twos_0 (sysclk, enable, product_d, twos_product);
      xfc_register #(2 * width, rows_border) rows_0 (sysclk, enable, twos_product, rows_product);
      xfc_register #(2 * width, pairs_border) pairs_0 (sysclk, enable, rows_product, pairs_product);
      xfc_register #(2 * width, quads_border) quads_0 (sysclk, enable, pairs_product, product);
    end else begin : written_out
      // recode
      wire [width-1:0] codes_d = b + {digits{2'b01}};
      wire minus_two_d = b[width-1] & codes_d[width-1] & codes_d[width-2];
      wire first_inverts = b[1] & b[0];
      wire [width:0] first_row = b[1] ? (b[0] ? ~{a[width-1], a} : {a, 1'b0})
                                      : {a[width-1], a} & {width+1{b[0]}};
      wire [width:0] first_d = first_row + {{width{1'b0}}, first_inverts};

      wire [width-1:0] codes, recode_a;
      wire minus_two;
      wire [width:0] first;
      xfc_register #(width, recode_border) recode_0 (sysclk, enable, codes_d, codes);
      xfc_register #(width, recode_border) recode_1 (sysclk, enable, a, recode_a);
      xfc_register #(1, recode_border) recode_2 (sysclk, enable, minus_two_d, minus_two);
      xfc_register #(width + 1, recode_border) recode_3 (sysclk, enable, first_d, first);

      // rows: eight blocks, of which the higher ones may be empty
      wire [8*block_bits-1:0] blocks_d, block;
      wire [7:0] short_d, short;
      for (i = 0; i < 8; i = i + 1) begin : rows
        if (i < blocks) begin : used
          localparam count = i == blocks - 1 ? digits - 4 * i : 4;
          xfc_product_rows #(width, count, twos_border, choose_border) add_rows
            (sysclk, enable, recode_a, first, i == 0 ? 1'b1 : 1'b0, codes[8*i+:2*count],
             i == blocks - 1 ? minus_two : 1'b0,
             blocks_d[block_bits*i+:block_bits], short_d[i]);
        end else begin : absent
          assign blocks_d[block_bits*i+:block_bits] = {block_bits{1'b0}};
          assign short_d[i] = 1'b0;
        end
      end

      xfc_register #(8 * block_bits, rows_border) rows_0 (sysclk, enable, blocks_d, block);
      xfc_register #(8, rows_border) rows_1 (sysclk, enable, short_d, short);

      // pairs
      wire [4*pair_bits-1:0] pairs_d, pair;
      wire [3:0] pair_short;
      for (i = 0; i < 4; i = i + 1) begin : pairs
        xfc_add_shifted #(block_bits, 8, pair_bits) add_blocks
          (block[2*block_bits*i+:block_bits], block[2*block_bits*i+block_bits+:block_bits], short[2*i+1],
           pairs_d[pair_bits*i+:pair_bits]);
      end

      xfc_register #(4 * pair_bits, pairs_border) pairs_0 (sysclk, enable, pairs_d, pair);
      xfc_register #(4, pairs_border) pairs_1 (sysclk, enable, {short[6], short[4], short[2], short[0]}, pair_short);

      // quads
      wire [quad_bits-1:0] lower_d, upper_d, lower, upper;
      wire upper_short;
      xfc_add_shifted #(pair_bits, 16, quad_bits) add_lower
        (pair[0+:pair_bits], pair[pair_bits+:pair_bits], pair_short[1], lower_d);
      xfc_add_shifted #(pair_bits, 16, quad_bits) add_upper
        (pair[2*pair_bits+:pair_bits], pair[3*pair_bits+:pair_bits], pair_short[3], upper_d);

      xfc_register #(quad_bits, quads_border) quads_0 (sysclk, enable, lower_d, lower);
      xfc_register #(quad_bits, quads_border) quads_1 (sysclk, enable, upper_d, upper);
      xfc_register #(1, quads_border) quads_2 (sysclk, enable, pair_short[2], upper_short);

      // all
      wire [width+63:0] all;
      xfc_add_shifted #(quad_bits, 32, width + 64) add_all (lower, upper, upper_short, all);
      wire unused = &{1'b0, all, pair_short[0]};
      assign product = all[2*width-1:0];
    end
  endgenerate
endmodule
