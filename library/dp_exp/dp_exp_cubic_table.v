// r ** 3 / 6 for r = (index + 1/2) * 2 ** -24, units of 2 ** -62.
// Made by make_tables.cpp. From the highest bits down: value (6 bits).
module dp_exp_cubic_table
  (input [5:0] index,
   output reg [5:0] row);

  always @*
    case (index)
      6'd0: row = 6'h00;
      6'd1: row = 6'h00;
      6'd2: row = 6'h00;
      6'd3: row = 6'h00;
      6'd4: row = 6'h00;
      6'd5: row = 6'h00;
      6'd6: row = 6'h00;
      6'd7: row = 6'h00;
      6'd8: row = 6'h00;
      6'd9: row = 6'h00;
      6'd10: row = 6'h00;
      6'd11: row = 6'h00;
      6'd12: row = 6'h00;
      6'd13: row = 6'h00;
      6'd14: row = 6'h00;
      6'd15: row = 6'h01;
      6'd16: row = 6'h01;
      6'd17: row = 6'h01;
      6'd18: row = 6'h01;
      6'd19: row = 6'h01;
      6'd20: row = 6'h01;
      6'd21: row = 6'h02;
      6'd22: row = 6'h02;
      6'd23: row = 6'h02;
      6'd24: row = 6'h02;
      6'd25: row = 6'h03;
      6'd26: row = 6'h03;
      6'd27: row = 6'h03;
      6'd28: row = 6'h04;
      6'd29: row = 6'h04;
      6'd30: row = 6'h05;
      6'd31: row = 6'h05;
      6'd32: row = 6'h06;
      6'd33: row = 6'h06;
      6'd34: row = 6'h07;
      6'd35: row = 6'h07;
      6'd36: row = 6'h08;
      6'd37: row = 6'h09;
      6'd38: row = 6'h09;
      6'd39: row = 6'h0a;
      6'd40: row = 6'h0b;
      6'd41: row = 6'h0c;
      6'd42: row = 6'h0c;
      6'd43: row = 6'h0d;
      6'd44: row = 6'h0e;
      6'd45: row = 6'h0f;
      6'd46: row = 6'h10;
      6'd47: row = 6'h11;
      6'd48: row = 6'h13;
      6'd49: row = 6'h14;
      6'd50: row = 6'h15;
      6'd51: row = 6'h16;
      6'd52: row = 6'h18;
      6'd53: row = 6'h19;
      6'd54: row = 6'h1a;
      6'd55: row = 6'h1c;
      6'd56: row = 6'h1d;
      6'd57: row = 6'h1f;
      6'd58: row = 6'h21;
      6'd59: row = 6'h22;
      6'd60: row = 6'h24;
      6'd61: row = 6'h26;
      6'd62: row = 6'h28;
      6'd63: row = 6'h2a;
    endcase
endmodule
