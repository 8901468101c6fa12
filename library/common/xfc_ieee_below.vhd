-- Whether IEEE number a stands before b when -0 stands before +0, and whether both have the same bits; for numbers and
-- zeros, whose halves xfc_ieee_halves compared. Of two subnormal numbers of one sign either may be below.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_ieee_below is
  port (negative    : in std_logic_vector(1 downto 0);   -- a, b
        halves      : in std_logic_vector(3 downto 0);   -- upper half less, equal, lower half less, equal
        below, same : out std_logic);
end xfc_ieee_below;

architecture rtl of xfc_ieee_below is
  signal less, equal, greater, signs_differ : std_logic;
begin
  less <= halves(3) or (halves(2) and halves(1));
  equal <= halves(2) and halves(0);
  greater <= not less and not equal;
  signs_differ <= negative(1) xor negative(0);
  below <= negative(1) when signs_differ = '1' else greater when negative(1) = '1' else less;
  same <= equal and not signs_differ;
end rtl;
