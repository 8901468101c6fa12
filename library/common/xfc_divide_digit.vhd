-- One digit of a quotient in base 4: how often the divisor goes into four times the remainder, which is below the
-- divisor before and after. The state has, from high to low, remainder, the complements of the divisor and of three
-- times the divisor (two bits more), whose addition subtracts without inverters, and the quotient's digits so far,
-- which move up by two bits.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divide_digit is
  generic (width         : positive;   -- bits of remainder and divisor
           quotient_bits : positive;
           enabled       : natural);   -- 1: a register behind, 0: none
  port (sysclk, enable : in std_logic;
        state : in std_logic_vector(3 * width + 2 + quotient_bits - 1 downto 0);
        next_state : out std_logic_vector(3 * width + 2 + quotient_bits - 1 downto 0));
end xfc_divide_digit;

architecture rtl of xfc_divide_digit is
  signal remainder, not_divisor, next_remainder : std_logic_vector(width - 1 downto 0);
  signal not_triple : std_logic_vector(width + 1 downto 0);
  signal quotient : std_logic_vector(quotient_bits - 1 downto 0);
  signal wide : std_logic_vector(width + 1 downto 0);
  signal minuend, less_one, less_two, less_three : unsigned(width + 3 downto 0);
  signal two, odd : std_logic;
  signal next_state_d : std_logic_vector(3 * width + 2 + quotient_bits - 1 downto 0);
begin
  remainder <= state(3 * width + 1 + quotient_bits downto 2 * width + 2 + quotient_bits);
  not_divisor <= state(2 * width + 1 + quotient_bits downto width + 2 + quotient_bits);
  not_triple <= state(width + 1 + quotient_bits downto quotient_bits);
  quotient <= state(quotient_bits - 1 downto 0);

  -- The three differences are computed at once, modulo 2 ** (width + 2); the carries say that they are not negative.
  -- A bit below the lowest carries the complements' unit in.
  wide <= remainder & "00";
  minuend <= unsigned('0' & wide & '1');
  less_one <= minuend + unsigned(std_logic_vector'("011" & not_divisor & '1'));
  less_two <= minuend + unsigned(std_logic_vector'("01" & not_divisor & "11"));
  less_three <= minuend + unsigned(std_logic_vector'('0' & not_triple & '1'));
  two <= less_two(width + 3);
  odd <= less_three(width + 3) when two = '1' else less_one(width + 3);
  next_remainder <= std_logic_vector(less_three(width downto 1)) when two = '1' and odd = '1' else
                    std_logic_vector(less_two(width downto 1)) when two = '1' else
                    std_logic_vector(less_one(width downto 1)) when odd = '1' else
                    wide(width - 1 downto 0);

  next_state_d <= next_remainder & not_divisor & not_triple & quotient(quotient_bits - 3 downto 0) & two & odd;
  divide_digit_0 : entity work.xfc_register generic map (3 * width + 2 + quotient_bits, enabled)
    port map (sysclk, enable, next_state_d, next_state);
end rtl;
