-- The smaller of two IEEE singles, or the larger one when `greatest` is 1. Exact. The number beside a nan, the quiet
-- nan of two; -0 is below +0, a subnormal number is the zero of its sign.
--   step halves:  both halves of exponent and fraction, nan and zero
--   step choose:  one of both; zeros and nan
-- Latency 2 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_extremef is
  generic (greatest : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_extremef;

architecture rtl of xfc_extremef is
begin
  assert greatest <= 1 report "xfc_extremef: greatest is 0 or 1" severity failure;

  extreme : entity work.xfc_extreme_ieee generic map (8, 23, greatest) port map (sysclk, enable, aa, bb, cc);
end rtl;
