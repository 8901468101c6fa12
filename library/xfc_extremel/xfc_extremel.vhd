-- The smaller of two integers of 32 bits, or the larger one when `greatest` is 1. Exact.
--   step order:   whether the first is less
--   step choose:  one of both
-- Latency 2 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_extremel is
  generic (greatest : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_extremel;

architecture rtl of xfc_extremel is
  -- order
  signal a, b : std_logic_vector(32 downto 1);
  signal below_d, below : std_logic_vector(0 downto 0);

  -- choose
  signal take_a : std_logic;
  signal chosen_d : std_logic_vector(32 downto 1);
begin
  assert greatest <= 1 report "xfc_extremel: greatest is 0 or 1" severity failure;

  -- order
  below_d <= "1" when signed(aa) < signed(bb) else "0";

  order_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, aa, a);
  order_1 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, bb, b);
  order_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, below_d, below);

  -- choose
  take_a <= not below(0) when greatest = 1 else below(0);
  chosen_d <= a when take_a = '1' else b;

  choose_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, chosen_d, cc);
end rtl;
