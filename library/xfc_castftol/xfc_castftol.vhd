-- Converts an IEEE single to an integer of 32 bits, toward zero as C does. Out of range it is the nearest end, nan
-- is 0.
--   step unpack:  range, distance; the significand as if it were worth 2 to the power 30
--   step coarse:  shift right by whole bytes
--   step fine:    shift right by single bits; what goes over the edge is dropped
--   step negate:  two's complement of a negative number
--   step settle:  the ends of the range
-- Latency 3 + normspeed cycles: registers behind unpack, fine, negate and settle; a fifth stands behind coarse.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castftol is
  generic (normspeed : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_castftol;

architecture rtl of xfc_castftol is
  constant exponent_bits  : positive := 8;
  constant fraction_bits  : positive := 23;
  constant magnitude_bits : positive := 31;
  constant coarse_border  : natural := normspeed - 1;
  constant bias           : positive := 127;
  constant last_exponent  : positive := 157;   -- of 2 to the power 30

  subtype magnitude_field is std_logic_vector(magnitude_bits - 1 downto 0);
  subtype integer_field is std_logic_vector(magnitude_bits downto 0);
  subtype mark_field is std_logic_vector(1 downto 0);   -- sign, beyond
  constant behind : std_logic_vector(magnitude_bits - fraction_bits - 2 downto 0) := (others => '0');

  -- unpack
  signal exponent : unsigned(exponent_bits - 1 downto 0);
  signal nan, below_one, beyond : std_logic;
  signal distance_d, distance : std_logic_vector(4 downto 0);
  signal significand_d, significand : std_logic_vector(fraction_bits downto 0);
  signal marks_d, marks : mark_field;

  -- coarse
  signal magnitude, coarse_d, coarse : magnitude_field;
  signal fine_distance : std_logic_vector(2 downto 0);
  signal coarse_marks : mark_field;

  -- fine
  signal whole_d, whole : magnitude_field;
  signal fine_marks : mark_field;

  -- negate
  signal complement, negate_d, whole_signed : integer_field;
  signal negate_marks : mark_field;

  -- settle
  signal settled_d : integer_field;
begin
  assert normspeed <= 2 report "xfc_castftol: normspeed is 1 or 2" severity failure;

  -- unpack
  exponent <= unsigned(aa(exponent_bits + fraction_bits downto fraction_bits + 1));
  nan <= '1' when exponent = 2 ** exponent_bits - 1 and unsigned(aa(fraction_bits downto 1)) /= 0 else '0';
  below_one <= '1' when exponent < bias or nan = '1' else '0';
  beyond <= '1' when exponent > last_exponent and nan = '0' else '0';
  distance_d <= std_logic_vector(to_unsigned(last_exponent mod 32, 5) - exponent(4 downto 0));
  significand_d <= (others => '0') when below_one = '1' else '1' & aa(fraction_bits downto 1);
  marks_d <= aa(32) & beyond;

  unpack_0 : entity work.xfc_register generic map (5, 1) port map (sysclk, enable, distance_d, distance);
  unpack_1 : entity work.xfc_register generic map (fraction_bits + 1, 1)
    port map (sysclk, enable, significand_d, significand);
  unpack_2 : entity work.xfc_register generic map (2, 1) port map (sysclk, enable, marks_d, marks);

  -- coarse
  magnitude <= significand & behind;
  coarse_d <= std_logic_vector(shift_right(unsigned(magnitude), 8 * to_integer(unsigned(distance(4 downto 3)))));

  coarse_0 : entity work.xfc_register generic map (magnitude_bits, coarse_border)
    port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (3, coarse_border)
    port map (sysclk, enable, distance(2 downto 0), fine_distance);
  coarse_2 : entity work.xfc_register generic map (2, coarse_border) port map (sysclk, enable, marks, coarse_marks);

  -- fine
  whole_d <= std_logic_vector(shift_right(unsigned(coarse), to_integer(unsigned(fine_distance))));

  fine_0 : entity work.xfc_register generic map (magnitude_bits, 1) port map (sysclk, enable, whole_d, whole);
  fine_1 : entity work.xfc_register generic map (2, 1) port map (sysclk, enable, coarse_marks, fine_marks);

  -- negate
  complement <= not ('0' & whole) when fine_marks(1) = '1' else '0' & whole;
  negate_d <= std_logic_vector(unsigned(complement) + unsigned(fine_marks(1 downto 1)));

  negate_0 : entity work.xfc_register generic map (magnitude_bits + 1, 1)
    port map (sysclk, enable, negate_d, whole_signed);
  negate_1 : entity work.xfc_register generic map (2, 1) port map (sysclk, enable, fine_marks, negate_marks);

  -- settle
  settled_d(magnitude_bits) <= negate_marks(1) when negate_marks(0) = '1' else whole_signed(magnitude_bits);
  settled_d(magnitude_bits - 1 downto 0) <= whole_signed(magnitude_bits - 1 downto 0) when negate_marks(0) = '0' else
                                            (others => '0') when negate_marks(1) = '1' else (others => '1');

  settle_0 : entity work.xfc_register generic map (magnitude_bits + 1, 1) port map (sysclk, enable, settled_d, cc);
end rtl;
