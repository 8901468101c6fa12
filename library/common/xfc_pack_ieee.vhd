-- Puts an IEEE number together: what is below the normal numbers is zero, what is above them infinite; nan, then sat,
-- then zip go before the number.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_pack_ieee is
  generic (exponent_bits : positive;   -- of the IEEE format
           fraction_bits : positive;
           wide_bits     : positive);  -- bits of the exponent that comes, two's complement, more than exponent_bits + 1
  port (exponent : in std_logic_vector(wide_bits - 1 downto 0);   -- with the IEEE format's bias
        fraction : in std_logic_vector(fraction_bits - 1 downto 0);
        marks    : in std_logic_vector(3 downto 0);               -- sign, nan, zip, sat
        packed_number : out std_logic_vector(exponent_bits + fraction_bits downto 0));
end xfc_pack_ieee;

architecture rtl of xfc_pack_ieee is
  constant sign_bit : positive := exponent_bits + fraction_bits;
  signal too_small, too_large, flushed, infinite : std_logic;
begin
  too_small <= '1' when signed(exponent) <= 0 else '0';
  too_large <= '1' when signed(exponent) >= 2 ** exponent_bits - 1 else '0';
  flushed <= not marks(0) and (marks(1) or too_small);
  infinite <= marks(0) or too_large;
  packed_number(sign_bit) <= marks(3) and not marks(2);
  packed_number(sign_bit - 1 downto fraction_bits) <=
    (others => '1') when marks(2) = '1' else
    (others => '0') when flushed = '1' else
    (others => '1') when infinite = '1' else exponent(exponent_bits - 1 downto 0);
  packed_number(fraction_bits - 1) <=
    '1' when marks(2) = '1' else fraction(fraction_bits - 1) and not flushed and not infinite;
  packed_number(fraction_bits - 2 downto 0) <=
    (others => '0') when (marks(2) or flushed or infinite) = '1' else fraction(fraction_bits - 2 downto 0);
end rtl;
