-- The smaller of two IEEE numbers, or the larger one when `greatest` is 1: a common part of xfc_extremef and
-- xfc_extremed, which say more.
--   step halves:  both halves of exponent and fraction, nan and zero
--   step choose:  one of both; zeros and nan
-- Latency 2 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_extreme_ieee is
  generic (exponent_bits : positive;
           fraction_bits : positive;
           greatest      : natural);
  port (sysclk, enable : in std_logic;
        aa : in std_logic_vector(exponent_bits + fraction_bits downto 0);
        bb : in std_logic_vector(exponent_bits + fraction_bits downto 0);
        cc : out std_logic_vector(exponent_bits + fraction_bits downto 0));
end xfc_extreme_ieee;

architecture rtl of xfc_extreme_ieee is
  constant width       : positive := exponent_bits + fraction_bits + 1;
  constant no_exponent : std_logic_vector(exponent_bits - 1 downto 0) := (others => '0');

  -- halves
  signal a, b : std_logic_vector(width - 1 downto 0);
  signal marks_d, marks : std_logic_vector(8 downto 0);   -- signs, nan, both zero, halves

  -- choose
  signal below, same, take_a, both_are_nan, zero : std_logic;
  signal chosen, chosen_d : std_logic_vector(width - 1 downto 0);
begin
  -- halves
  halves : entity work.xfc_ieee_halves generic map (exponent_bits, fraction_bits) port map (aa, bb, marks_d);

  halves_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, aa, a);
  halves_1 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, bb, b);
  halves_2 : entity work.xfc_register generic map (9, 1) port map (sysclk, enable, marks_d, marks);

  -- choose
  choose_below : entity work.xfc_ieee_below port map (marks(8 downto 7), marks(3 downto 0), below, same);
  take_a <= marks(5) or (not marks(6) and not below) when greatest = 1 else marks(5) or (not marks(6) and below);
  chosen <= a when take_a = '1' else b;
  both_are_nan <= marks(6) and marks(5);
  zero <= '1' when chosen(width - 2 downto fraction_bits) = no_exponent else '0';
  chosen_d(width - 1) <= chosen(width - 1) and not both_are_nan;
  chosen_d(width - 2 downto fraction_bits) <= (others => '1') when both_are_nan = '1' else
                                              chosen(width - 2 downto fraction_bits);
  chosen_d(fraction_bits - 1) <= both_are_nan or (chosen(fraction_bits - 1) and not zero);
  chosen_d(fraction_bits - 2 downto 0) <= (others => '0') when (both_are_nan or zero) = '1' else
                                          chosen(fraction_bits - 2 downto 0);

  choose_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, chosen_d, cc);
end rtl;
