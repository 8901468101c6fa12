// Adds up to four rows of a product: row j is one of -a, 0, a and 2a, or -2a for the last one, times 4 ** j. A digit
// is coded as its value plus 1. A negative row is a ones' complement, and what it misses comes in as the carry of the
// adder that takes the row in; for the lowest row that is the adder behind this part, told by `one_short`. One look-up
// table a bit of a row, one carry chain for two rows. Registers may stand behind the rows and behind the sums of two.
module xfc_product_rows
  #(parameter width  = 32,   // bits of a, two's complement
    parameter digits = 4,    // rows, 1 to 4
    parameter twos_border = 0,
    parameter choose_border = 0)
  (input sysclk, enable,
   input [width-1:0] a,
   input [width:0] first,            // what row 0 is instead when has_first is 1; it misses nothing
   input has_first,
   input [2*digits-1:0] codes,       // lowest digit in the lowest bits
   input minus_two,                  // the last digit, of code 3, is -2
   output [width+7:0] sum,
   output one_short);                     // 1: the sum is 1 too small

  wire [4*(width+1)-1:0] rows_d, rows;
  wire [3:0] short_d, short;         // rows that miss their unit
  genvar j;

  generate
    for (j = 0; j < 4; j = j + 1) begin : row
      if (j < digits) begin : used
        wire [1:0] code = codes[2*j+1:2*j];
        wire inverts = j == digits - 1 ? minus_two : 1'b0;
        wire [width:0] value =
          code == 2'd0 ? ~{a[width-1], a} :
          code == 2'd1 ? {width+1{1'b0}} :
          code == 2'd2 ? {a[width-1], a} : {a, 1'b0} ^ {width+1{inverts}};
        assign rows_d[(width+1)*j+:width+1] = j == 0 && has_first ? first : value;
        assign short_d[j] = (code == 2'd0 || inverts) && !(j == 0 && has_first);
      end else begin : absent
        assign rows_d[(width+1)*j+:width+1] = {width+1{1'b0}};
        assign short_d[j] = 1'b0;
      end
    end
  endgenerate

  xfc_register #(4 * (width + 1), choose_border) choose_0 (sysclk, enable, rows_d, rows);
  xfc_register #(4, choose_border) choose_1 (sysclk, enable, short_d, short);

  wire [width+3:0] lower_d, upper_d, lower, upper;
  wire upper_short;
  xfc_add_shifted #(width + 1, 2, width + 4) add_lower (rows[0+:width+1], rows[width+1+:width+1], short[1], lower_d);
  xfc_add_shifted #(width + 1, 2, width + 4) add_upper
    (rows[2*(width+1)+:width+1], rows[3*(width+1)+:width+1], short[3], upper_d);
  xfc_register #(width + 4, twos_border) twos_0 (sysclk, enable, lower_d, lower);
  xfc_register #(width + 4, twos_border) twos_1 (sysclk, enable, upper_d, upper);
  xfc_register #(2, twos_border) twos_2 (sysclk, enable, {short[2], short[0]}, {upper_short, one_short});
  xfc_add_shifted #(width + 4, 4, width + 8) add_both (lower, upper, upper_short, sum);
endmodule
