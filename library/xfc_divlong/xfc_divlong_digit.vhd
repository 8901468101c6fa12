-- One digit of an unsigned quotient, without restoring: the divisor is subtracted from the remainder, added when the
-- remainder is negative. The state has, from high to low, the remainder (two's complement, a bit more), the divisor and
-- the dividend's bits that are still to come, behind which the quotient's digits move up. A digit is 1 where the
-- remainder is not negative; it enters one step later, so that nothing stands behind the carry chain.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divlong_digit is
  generic (width : positive);   -- bits of dividend, divisor and quotient
  port (sysclk, enable : in std_logic;
        state : in std_logic_vector(3 * width downto 0);
        next_state : out std_logic_vector(3 * width downto 0));
end xfc_divlong_digit;

architecture rtl of xfc_divlong_digit is
  signal remainder : std_logic_vector(width downto 0);
  signal divisor, quotient : std_logic_vector(width - 1 downto 0);
  signal negative, positive : std_logic;
  signal shifted, divided, addend : std_logic_vector(width + 1 downto 0);
  signal sum : unsigned(width + 1 downto 0);
  signal next_state_d : std_logic_vector(3 * width downto 0);
begin
  remainder <= state(3 * width downto 2 * width);
  divisor <= state(2 * width - 1 downto width);
  quotient <= state(width - 1 downto 0);

  -- A bit below the lowest carries the complement's unit in.
  negative <= remainder(width);
  positive <= not negative;
  shifted <= remainder(width - 1 downto 0) & quotient(width - 1) & '1';
  divided <= '0' & divisor & '0';
  addend <= divided when negative = '1' else not divided;
  sum <= unsigned(shifted) + unsigned(addend);

  next_state_d <= std_logic_vector(sum(width + 1 downto 1)) & divisor & quotient(width - 2 downto 0) & positive;
  divlong_digit_0 : entity work.xfc_register generic map (3 * width + 1, 1)
    port map (sysclk, enable, next_state_d, next_state);
end rtl;
