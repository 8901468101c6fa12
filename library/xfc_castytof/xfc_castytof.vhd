-- Converts a YDouble value in adder form to an IEEE single. Nearest, to even between two. What is below the smallest
-- normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Exponent field 0 is zero. It
-- rounds once, whatever roundconvert is.
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
-- Latency 5 + 2 * normspeed cycles; xfc_to_ieee holds the steps and says where registers stand.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castytof is
  generic (roundconvert : natural; normspeed : positive := 1);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(32 downto 1));
end xfc_castytof;

architecture rtl of xfc_castytof is
  constant guard_bits      : positive := 4;
  constant bias_difference : positive := 896;   -- a double's exponent field less a single's
  constant mantissa_bits   : positive := 64;
  constant exponent_bits   : positive := 13;
  constant ieee_exponent   : positive := 8;
  constant fraction_bits   : positive := 23;
  constant latency         : positive := 2 * normspeed + 5;

  signal exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal zero : std_logic;
  signal flags : std_logic_vector(2 downto 0);   -- nan, zip, sat
begin
  assert roundconvert <= 1 report "xfc_castytof: roundconvert is 0 or 1" severity failure;
  assert normspeed <= 2 report "xfc_castytof: normspeed is 1 or 2" severity failure;

  exponent <= aa(exponent_bits downto 1);
  zero <= '1' when aazip = '1' or unsigned(exponent) = 0 else '0';
  flags <= aanan & zero & aasat;
  to_ieee : entity work.xfc_to_ieee
    generic map (mantissa_bits, guard_bits - bias_difference, ieee_exponent, fraction_bits, latency)
    port map (sysclk, enable, aa(mantissa_bits + exponent_bits downto exponent_bits + 1), exponent, flags, cc);
end rtl;
