-- One digit of a quotient in base 4: how often the divisor goes into four times the remainder, which is below the
-- divisor before and after. The state has, from high to low, remainder, the complements of the divisor and of three
-- times the divisor (its two low bits left out), whose addition subtracts without inverters, whether the divisor's two
-- low bits are zero, and the quotient's digits so far, which move up by two bits.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divide_digit is
  generic (width         : positive;   -- bits of remainder and divisor
           quotient_bits : positive;
           enabled       : natural);   -- 1: a register behind, 0: none
  port (sysclk, enable : in std_logic;
        state : in std_logic_vector(3 * width + 1 + quotient_bits - 1 downto 0);
        next_state : out std_logic_vector(3 * width + 1 + quotient_bits - 1 downto 0));
end xfc_divide_digit;

architecture rtl of xfc_divide_digit is
  signal remainder, not_divisor, not_triple : std_logic_vector(width - 1 downto 0);
  signal low_is_zero : std_logic;
  signal quotient : std_logic_vector(quotient_bits - 1 downto 0);
  signal minuend, less_one, less_two, less_three : unsigned(width + 1 downto 0);
  signal two, odd : std_logic;
  signal high : std_logic_vector(width - 3 downto 0);
  signal low : std_logic_vector(1 downto 0);
  signal next_state_d : std_logic_vector(3 * width + 1 + quotient_bits - 1 downto 0);
begin
  remainder <= state(3 * width + quotient_bits downto 2 * width + 1 + quotient_bits);
  not_divisor <= state(2 * width + quotient_bits downto width + 1 + quotient_bits);
  not_triple <= state(width + quotient_bits downto quotient_bits + 1);
  low_is_zero <= state(quotient_bits);
  quotient <= state(quotient_bits - 1 downto 0);

  -- The three differences are computed at once, modulo 2 ** (width + 2) and without their two low bits, in which four
  -- times the remainder has zeros; the carries say that they are not negative. A bit below the lowest takes in the
  -- carry from there: the complements' unit gets through where the subtrahend's two low bits are zero.
  minuend <= unsigned('0' & remainder & '1');
  less_one <= minuend + unsigned(std_logic_vector'("011" & not_divisor(width - 1 downto 2) & low_is_zero));
  less_two <= minuend + unsigned(std_logic_vector'("01" & not_divisor));
  less_three <= minuend + unsigned(std_logic_vector'('0' & not_triple & low_is_zero));
  two <= less_two(width + 1);
  odd <= less_three(width + 1) when two = '1' else less_one(width + 1);
  high <= std_logic_vector(less_three(width - 2 downto 1)) when odd = '1' and two = '1' else
          std_logic_vector(less_one(width - 2 downto 1)) when odd = '1' else
          std_logic_vector(less_two(width - 2 downto 1)) when two = '1' else
          remainder(width - 3 downto 0);
  low(1) <= not_divisor(1) xor (two or not_divisor(0)) when odd = '1' else two and not not_divisor(0);
  low(0) <= odd and not not_divisor(0);

  next_state_d <=
    high & low & not_divisor & not_triple & low_is_zero & quotient(quotient_bits - 3 downto 0) & two & odd;
  divide_digit_0 : entity work.xfc_register generic map (3 * width + 1 + quotient_bits, enabled)
    port map (sysclk, enable, next_state_d, next_state);
end rtl;
