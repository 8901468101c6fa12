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

  // q of steps[cycle] is what entered `cycle` cycles ago.
  genvar cycle;
  generate
    for (cycle = 0; cycle <= delay; cycle = cycle + 1) begin : steps
      wire [width:1] q;
      if (cycle == 0) begin : first
        assign q = aa;
      end else begin : later
        xfc_register #(width, 1) step (sysclk, enable, steps[cycle-1].q, q);
      end
    end
  endgenerate
  assign cc = steps[delay].q;
endmodule
