// Shifts a signed value right by distance * unit bits and says whether a 1 went over the edge, here or before.
// Several of these behind each other, the largest unit first, make a long shift with registers between.
module xfc_shift_right
  #(parameter width  = 32,   // bits of the value
    parameter levels = 5,    // bits of the distance
    parameter unit   = 1)    // bits that the lowest bit of the distance stands for
  (input [width-1:0] value,
   input [levels-1:0] distance,
   input lost_before,
   output [width-1:0] shifted,
   output lost);

  reg signed [width-1:0] current;
  reg sticky;
  integer level;

  always @* begin : shift
    current = value;
    sticky = lost_before;
    for (level = levels - 1; level >= 0; level = level - 1)
      if (distance[level]) begin
        sticky = sticky | (|(current & ~({width{1'b1}} << (unit << level))));
        current = current >>> (unit << level);
      end
  end

  assign shifted = current;
  assign lost = sticky;
endmodule
