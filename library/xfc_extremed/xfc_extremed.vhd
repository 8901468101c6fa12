-- The smaller of two IEEE doubles, or the larger one when `greatest` is 1. Exact. The number beside a nan, the quiet
-- nan of two; -0 is below +0, a subnormal number is the zero of its sign.
--   step halves:  both halves of exponent and fraction, nan and zero
--   step choose:  one of both; zeros and nan
-- Latency 2 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_extremed is
  generic (greatest : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        bb : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector(64 downto 1));
end xfc_extremed;

architecture rtl of xfc_extremed is
begin
  assert greatest <= 1 report "xfc_extremed: greatest is 0 or 1" severity failure;

  extreme : entity work.xfc_extreme_ieee generic map (11, 52, greatest) port map (sysclk, enable, aa, bb, cc);
end rtl;
