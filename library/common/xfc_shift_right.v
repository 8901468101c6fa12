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

  reg [width-1:0] current;
  reg sticky;
  integer level, amount, i;

  always @* begin : shift
    current = value;
    sticky = lost_before;
    amount = unit;
    for (level = levels - 1; level >= 0; level = level - 1) begin
      amount = unit * (1 << level);
      if (distance[level]) begin
        for (i = 0; i < width; i = i + 1)
          if (i < amount) sticky = sticky | current[i];
        for (i = 0; i < width; i = i + 1)
          if (i + amount < width) current[i] = current[i+amount];
          else current[i] = value[width-1];
      end
    end
  end

  assign shifted = current;
  assign lost = sticky;
endmodule
