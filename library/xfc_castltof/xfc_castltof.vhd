-- Converts an integer of 32 bits to an IEEE single: nearest, to even between two.
--   step complement:  ones' complement of a negative mantissa, one low unit short of its magnitude
--   step bytes:       how many bytes in front are empty
--   step coarse:      shift left by so many bytes
--   step bits:        zeros in front of the first byte
--   step fine:        shift left by so many bits
--   step decide:      whether to round up; the exponent of the leading one; nothing but zeros is zero
--   step round:       lower half of the fraction, for rounding and for the missing unit
--   step carry:       upper half of the fraction and the exponent
--   step range:       too small, too large
--   step pack:        the fields
-- Latency 3 + 2 * normspeed cycles; xfc_to_ieee holds the steps and says where registers stand.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_castltof is
  generic (normspeed : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_castltof;

architecture rtl of xfc_castltof is
  constant adjust        : positive := 157;   -- exponent field of the highest bit behind the sign
  constant ieee_exponent : positive := 8;
  constant fraction_bits : positive := 23;
  constant latency       : positive := 2 * normspeed + 3;

begin
  assert normspeed <= 2 report "xfc_castltof: normspeed is 1 or 2" severity failure;

  to_ieee : entity work.xfc_to_ieee
    generic map (32, adjust, ieee_exponent, fraction_bits, latency)
    port map (sysclk, enable, aa, "0000000000000", "000", cc);
end rtl;
