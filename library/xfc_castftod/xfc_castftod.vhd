-- Converts an IEEE single to an IEEE double. Exact; a subnormal number is zero, nan is 7FF8000000000000.
--   cycle 1  unpack:  flags and the exponent with the double's bias
--   cycle 2  pack:    the fields
-- Latency 2 cycles.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castftod is
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(64 downto 1));
end xfc_castftod;

architecture rtl of xfc_castftod is
  constant fraction_bits   : positive := 23;
  constant ieee_exponent   : positive := 11;
  constant bias_difference : positive := 896;
  constant tail            : positive := 52 - fraction_bits;

  signal exponent_is_zero, exponent_is_ones, fraction_is_zero : std_logic;
  signal marks_d, marks : std_logic_vector(3 downto 0);   -- sign, nan, zip, sat
  signal exponent_d, exponent, packed_exponent : std_logic_vector(ieee_exponent - 1 downto 0);
  signal fraction : std_logic_vector(fraction_bits - 1 downto 0);
  signal packed_d : std_logic_vector(63 downto 0);
begin
  -- unpack
  exponent_is_zero <= '1' when unsigned(aa(31 downto 24)) = 0 else '0';
  exponent_is_ones <= '1' when unsigned(aa(31 downto 24)) = 255 else '0';
  fraction_is_zero <= '1' when unsigned(aa(fraction_bits downto 1)) = 0 else '0';
  marks_d <= aa(32) & (exponent_is_ones and not fraction_is_zero) & exponent_is_zero &
             (exponent_is_ones and fraction_is_zero);
  exponent_d <= std_logic_vector(resize(unsigned(aa(31 downto 24)), ieee_exponent) + bias_difference);

  unpack_0 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);
  unpack_1 : entity work.xfc_register generic map (ieee_exponent, 1) port map (sysclk, enable, exponent_d, exponent);
  unpack_2 : entity work.xfc_register generic map (fraction_bits, 1)
    port map (sysclk, enable, aa(fraction_bits downto 1), fraction);

  -- pack
  packed_exponent <= (others => '0') when marks(1) = '1' else
                     (others => '1') when (marks(2) or marks(0)) = '1' else exponent;
  packed_d(63) <= marks(3) and not marks(2);
  packed_d(62 downto 52) <= packed_exponent;
  packed_d(51) <= marks(2) or (fraction(fraction_bits - 1) and not marks(1));
  packed_d(50 downto tail) <= (others => '0') when (marks(2) or marks(1)) = '1' else
                              fraction(fraction_bits - 2 downto 0);
  packed_d(tail - 1 downto 0) <= (others => '0');

  pack_0 : entity work.xfc_register generic map (64, 1) port map (sysclk, enable, packed_d, cc);
end rtl;
