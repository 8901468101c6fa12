// Shifts a value left by distance * unit bits; what comes in from the right is `fill`. Several of these behind each
// other make a long shift with registers between.
module xfc_shift_left
  #(parameter width  = 32,   // bits of the value
    parameter levels = 5,    // bits of the distance
    parameter unit   = 1)    // bits that the lowest bit of the distance stands for
  (input [width-1:0] value,
   input [levels-1:0] distance,
   input fill,
   output [width-1:0] shifted);

  reg [width-1:0] current;
  integer level;

  always @* begin : shift
    current = value;
    for (level = levels - 1; level >= 0; level = level - 1)
      if (distance[level])
        current = (current << (unit << level)) | ({width{fill}} & ~({width{1'b1}} << (unit << level)));
  end

  assign shifted = current;
endmodule
