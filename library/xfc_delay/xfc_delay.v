// Passes a bus on after `delay` cycles, whatever its bits mean. Exact.
// A chain of registers without reset is what tools turn into shift-register tables, so `synthesize` changes nothing.
// Latency: delay cycles.
module xfc_delay
  #(parameter width = 1, delay = 1, synthesize = 0)
  (input sysclk, reset, enable,
   input [width:1] aa,
   output [width:1] cc);

  generate
    if (width < 1 || delay < 1 || synthesize < 0 || synthesize > 1)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  // What entered `cycle` cycles ago, at bit cycle * width and up.
  wire [(delay+1)*width-1:0] line;
  assign line[width-1:0] = aa;
  genvar cycle;
  generate
    for (cycle = 1; cycle <= delay; cycle = cycle + 1) begin : steps
      xfc_register #(width, 1) step (sysclk, enable, line[(cycle-1)*width +: width], line[cycle*width +: width]);
    end
  endgenerate
  assign cc = line[delay*width +: width];
endmodule
