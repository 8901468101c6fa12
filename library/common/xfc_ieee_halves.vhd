-- How two IEEE numbers stand to each other, in two halves of their magnitudes, so that no carry chain is long.
-- marks, from high to low: signs of a and b, nan of a and b, both zero, then a less than and equal to b in the upper
-- half and in the lower half of exponent and fraction. Subnormal numbers are zeros.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_ieee_halves is
  generic (exponent_bits : positive;
           fraction_bits : positive);
  port (a     : in std_logic_vector(exponent_bits + fraction_bits downto 0);
        b     : in std_logic_vector(exponent_bits + fraction_bits downto 0);
        marks : out std_logic_vector(8 downto 0));
end xfc_ieee_halves;

architecture rtl of xfc_ieee_halves is
  constant magnitude_bits : positive := exponent_bits + fraction_bits;
  constant lower_bits     : positive := (magnitude_bits + 1) / 2;
  constant no_exponent    : std_logic_vector(exponent_bits - 1 downto 0) := (others => '0');
  constant no_fraction    : std_logic_vector(fraction_bits - 1 downto 0) := (others => '0');

  signal a_exponent, b_exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal a_fraction, b_fraction : std_logic_vector(fraction_bits - 1 downto 0);
  signal a_upper, b_upper : unsigned(magnitude_bits - lower_bits - 1 downto 0);
  signal a_lower, b_lower : unsigned(lower_bits - 1 downto 0);
begin
  a_exponent <= a(magnitude_bits - 1 downto fraction_bits);
  b_exponent <= b(magnitude_bits - 1 downto fraction_bits);
  a_fraction <= a(fraction_bits - 1 downto 0);
  b_fraction <= b(fraction_bits - 1 downto 0);
  a_upper <= unsigned(a(magnitude_bits - 1 downto lower_bits));
  b_upper <= unsigned(b(magnitude_bits - 1 downto lower_bits));
  a_lower <= unsigned(a(lower_bits - 1 downto 0));
  b_lower <= unsigned(b(lower_bits - 1 downto 0));
  marks(8) <= a(magnitude_bits);
  marks(7) <= b(magnitude_bits);
  marks(6) <= '1' when (not a_exponent) = no_exponent and a_fraction /= no_fraction else '0';
  marks(5) <= '1' when (not b_exponent) = no_exponent and b_fraction /= no_fraction else '0';
  marks(4) <= '1' when (a_exponent or b_exponent) = no_exponent else '0';
  marks(3) <= '1' when a_upper < b_upper else '0';
  marks(2) <= '1' when a_upper = b_upper else '0';
  marks(1) <= '1' when a_lower < b_lower else '0';
  marks(0) <= '1' when a_lower = b_lower else '0';
end rtl;
