-- Converts an XFloat value in adder form to an IEEE double. Exponent field 0 is zero; nan is 7FF8000000000000. A
-- double holds every mantissa, so the result is exact and roundconvert costs cycles alone.
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
-- Latency 7 + doublespeed + roundconvert * (1 + doublespeed) cycles; xfc_to_ieee holds the steps and says where
-- registers stand.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity castxtod is
  generic (mantissa : positive; roundconvert : natural; doublespeed : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(64 downto 1));
end castxtod;

architecture rtl of castxtod is
  constant guard_bits      : positive := 4;
  constant bias_difference : positive := 896;   -- a double's exponent field less a single's
  constant exponent_bits   : positive := 10;
  constant ieee_exponent   : positive := 11;
  constant fraction_bits   : positive := 52;
  constant latency         : positive := (doublespeed + 1) * roundconvert + doublespeed + 7;

  signal exponent : std_logic_vector(12 downto 0);
  signal zero : std_logic;
  signal flags : std_logic_vector(2 downto 0);   -- nan, zip, sat
begin
  assert mantissa = 32 or mantissa = 36 report "castxtod: mantissa is 32 or 36" severity failure;
  assert roundconvert <= 1 report "castxtod: roundconvert is 0 or 1" severity failure;
  assert doublespeed <= 1 report "castxtod: doublespeed is 0 or 1" severity failure;

  exponent <= "000" & aa(exponent_bits downto 1);
  zero <= '1' when aazip = '1' or unsigned(exponent) = 0 else '0';
  flags <= aanan & zero & aasat;
  to_ieee : entity work.xfc_to_ieee
    generic map (mantissa, guard_bits + bias_difference, ieee_exponent, fraction_bits, latency)
    port map (sysclk, enable, aa(mantissa + exponent_bits downto exponent_bits + 1), exponent, flags, cc);
end rtl;
