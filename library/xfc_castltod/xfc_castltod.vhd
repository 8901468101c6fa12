-- Converts an integer of 32 bits to an IEEE double. A double holds every integer, so the result is exact and
-- roundconvert costs cycles alone.
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
-- Latency 4 + normspeed + doublespeed + roundconvert * (1 + doublespeed) cycles; xfc_to_ieee holds the steps and says
-- where registers stand.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_castltod is
  generic (roundconvert : natural; normspeed : positive; doublespeed : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(64 downto 1));
end xfc_castltod;

architecture rtl of xfc_castltod is
  constant adjust        : positive := 1053;   -- exponent field of the highest bit behind the sign
  constant ieee_exponent : positive := 11;
  constant fraction_bits : positive := 52;
  constant latency       : positive := (doublespeed + 1) * roundconvert + normspeed + doublespeed + 4;

begin
  assert roundconvert <= 1 report "xfc_castltod: roundconvert is 0 or 1" severity failure;
  assert normspeed <= 3 report "xfc_castltod: normspeed is 1 to 3" severity failure;
  assert doublespeed <= 1 report "xfc_castltod: doublespeed is 0 or 1" severity failure;

  to_ieee : entity work.xfc_to_ieee
    generic map (32, adjust, ieee_exponent, fraction_bits, latency)
    port map (sysclk, enable, aa, "0000000000000", "000", cc);
end rtl;
