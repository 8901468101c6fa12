// Shifts an integer of 32 bits by the low five bits of bb: left, right with copies of the sign, right with zeros for
// direction 0 to 2. A bit in front of the integer says what a shift to the right brings in.
//   step coarse:  by whole bytes
//   step fine:    by single bits
// Latency 2 cycles: a register behind each step.
module xfc_shiftlong
  #(parameter direction = 0)
  (input sysclk, reset, enable,
   input [32:1] aa,
   input [32:1] bb,
   output [32:1] cc);

  generate
    if (direction < 0 || direction > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate

  localparam width = 32;

  // coarse
  wire front = direction == 1 ? aa[width] : 1'b0;
  wire [width:0] coarse_d;
  wire coarse_lost;

  wire [width:0] coarse;
  wire [2:0] distance;
  xfc_register #(width + 1, 1) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(3, 1) coarse_1 (sysclk, enable, bb[3:1], distance);

  // fine
  wire [width:0] fine_d;
  wire fine_lost;

  generate
    if (direction == 0) begin : to_the_left
      xfc_shift_left #(width + 1, 2, 8) shift_coarse ({front, aa}, bb[5:4], 1'b0, coarse_d);
      xfc_shift_left #(width + 1, 3, 1) shift_fine (coarse, distance, 1'b0, fine_d);
      assign coarse_lost = 1'b0;
      assign fine_lost = 1'b0;
    end else begin : to_the_right
      xfc_shift_right #(width + 1, 2, 8) shift_coarse ({front, aa}, bb[5:4], 1'b0, coarse_d, coarse_lost);
      xfc_shift_right #(width + 1, 3, 1) shift_fine (coarse, distance, 1'b0, fine_d, fine_lost);
    end
  endgenerate
  wire unused = &{1'b0, reset, bb[width:6], coarse_lost, fine_lost, fine_d[width]};

  xfc_register #(width, 1) fine_0 (sysclk, enable, fine_d[width-1:0], cc);
endmodule
