-- Rounds an IEEE double to an integer: down, up, toward zero, to nearest with halves away from zero for rounding 0 to
-- 3. Exact; the sign stays, of a zero too. Subnormal numbers are zeros, infinities stay, nan is the quiet one.
--   step place:  the bits of the fraction that are worth less than 1
--   step cut:    without them; whether one unit comes to the magnitude. Below 1 the number becomes 1/2
--   step lower:  the unit and the lower half of the sum
--   step upper:  the upper half, which carries into the exponent; zeros and nan
-- Latency 4 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_roundd is
  generic (rounding : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector(64 downto 1));
end xfc_roundd;

architecture rtl of xfc_roundd is
  constant exponent_bits : positive := 11;
  constant fraction_bits : positive := 52;
  constant lower_border  : natural := 1;
begin
  assert rounding <= 3 report "xfc_roundd: rounding is 0 to 3" severity failure;

  -- place, cut, lower, upper
  round : entity work.xfc_round_ieee generic map (exponent_bits, fraction_bits, rounding, lower_border)
    port map (sysclk, enable, aa, cc);
end rtl;
