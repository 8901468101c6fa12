-- What every generated VHDL bench needs: hexadecimal vectors in, results of the comparison out.
library ieee;
use ieee.std_logic_1164.all;
use std.textio.all;

package bench_text is
  -- Reads one number; the vector is shorter than its digits by up to three bits.
  procedure read_hex(source : inout line; value : out std_logic_vector);
  procedure report_mismatch(set, operand : natural; found : std_logic_vector);
  procedure report_latencies(set : natural; fits : std_logic_vector);
  procedure report_done(lines : natural);
end bench_text;

package body bench_text is
  procedure read_hex(source : inout line; value : out std_logic_vector) is
    constant digits : positive := (value'length + 3) / 4;
    variable bits : std_logic_vector(4 * digits - 1 downto 0);
    variable each : character;
    variable number : natural;
  begin
    each := ' ';
    while each = ' ' loop
      read(source, each);
    end loop;
    for digit in digits - 1 downto 0 loop
      if each <= '9' then
        number := character'pos(each) - character'pos('0');
      else
        number := character'pos(each) - character'pos('a') + 10;
      end if;
      for i in 0 to 3 loop
        if (number / 2 ** i) mod 2 = 1 then
          bits(4 * digit + i) := '1';
        else
          bits(4 * digit + i) := '0';
        end if;
      end loop;
      if digit > 0 then
        read(source, each);
      end if;
    end loop;
    value := bits(value'length - 1 downto 0);
  end read_hex;

  procedure report_mismatch(set, operand : natural; found : std_logic_vector) is
    variable message : line;
    alias bits : std_logic_vector(found'length - 1 downto 0) is found;
  begin
    write(message, string'("MISMATCH "));
    write(message, set);
    write(message, character'(' '));
    write(message, operand);
    write(message, character'(' '));
    for i in bits'range loop
      case bits(i) is
        when '0' => write(message, character'('0'));
        when '1' => write(message, character'('1'));
        when others => write(message, character'('x'));
      end case;
    end loop;
    writeline(output, message);
  end report_mismatch;

  procedure report_latencies(set : natural; fits : std_logic_vector) is
    variable message : line;
  begin
    for cycles in fits'low to fits'high loop
      if fits(cycles) = '1' then
        write(message, string'("LATENCY "));
        write(message, set);
        write(message, character'(' '));
        write(message, cycles);
        writeline(output, message);
      end if;
    end loop;
  end report_latencies;

  procedure report_done(lines : natural) is
    variable message : line;
  begin
    write(message, string'("DONE "));
    write(message, lines);
    writeline(output, message);
  end report_done;
end bench_text;
