-- Converts a YDouble value in adder form to an IEEE double. Nearest, to even between two. What is below the smallest
-- normal number after rounding is zero, what is too large is infinite; nan is 7FF8000000000000. Exponent field 0 is
-- zero. It rounds whatever roundconvert is, for the negative ones need the carry chain in any case; synthesize changes
-- nothing.
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
-- Latency 4 + normspeed + roundconvert * (1 + 2 * doublespeed) cycles, 5 to 10; xfc_to_ieee holds the steps and says
-- where registers stand.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castytod is
  generic (roundconvert : natural; normspeed : positive; doublespeed : natural; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(64 downto 1));
end xfc_castytod;

architecture rtl of xfc_castytod is
  constant guard_bits    : positive := 4;
  constant mantissa_bits : positive := 64;
  constant exponent_bits : positive := 13;
  constant ieee_exponent : positive := 11;
  constant fraction_bits : positive := 52;
  constant latency       : positive := (2 * doublespeed + 1) * roundconvert + normspeed + 4;

  signal exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal zero : std_logic;
  signal flags : std_logic_vector(2 downto 0);   -- nan, zip, sat
begin
  assert roundconvert <= 1 report "xfc_castytod: roundconvert is 0 or 1" severity failure;
  assert normspeed <= 3 report "xfc_castytod: normspeed is 1 to 3" severity failure;
  assert doublespeed <= 1 report "xfc_castytod: doublespeed is 0 or 1" severity failure;
  assert synthesize <= 1 report "xfc_castytod: synthesize is 0 or 1" severity failure;

  exponent <= aa(exponent_bits downto 1);
  zero <= '1' when aazip = '1' or unsigned(exponent) = 0 else '0';
  flags <= aanan & zero & aasat;
  to_ieee : entity work.xfc_to_ieee
    generic map (mantissa_bits, guard_bits, ieee_exponent, fraction_bits, latency)
    port map (sysclk, enable, aa(mantissa_bits + exponent_bits downto exponent_bits + 1), exponent, flags, cc);
end rtl;
