-- Brings the highest 1 of a value to the front. At least one copy of `fill` is put behind the value, which makes whole
-- bytes; copies of it come in from the right. A value of nothing but zeros counts all bits but the last.
--   step bytes:   how many bytes in front are empty
--   step coarse:  shift left by so many bytes
--   step bits:    zeros in front of the first byte
--   step fine:    shift left by so many bits
-- A border of 1 is a register behind the step of its name; what is given beside the value keeps step with it.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_normalize is
  generic (width : positive;   -- bits of the value, 8 to 63
           side  : positive;   -- bits beside the value
           bytes_border, coarse_border, bits_border, fine_border : natural);
  port (sysclk, enable : in std_logic;
        value  : in std_logic_vector(width - 1 downto 0);
        fill   : in std_logic;
        beside : in std_logic_vector(side - 1 downto 0);
        normal : out std_logic_vector(8 * (width / 8 + 1) - 1 downto 0);
        zeros  : out std_logic_vector(5 downto 0);
        passed : out std_logic_vector(side - 1 downto 0));
end xfc_normalize;

architecture rtl of xfc_normalize is
  constant blocks : positive := width / 8 + 1;
  constant padded : positive := 8 * blocks;

  subtype value_field is std_logic_vector(padded - 1 downto 0);
  subtype side_field is std_logic_vector(side downto 0);
  constant empty : std_logic_vector(7 downto 0) := (others => '0');

  -- bytes
  signal padding : std_logic_vector(padded - width - 1 downto 0);
  signal bytes_value_d, bytes_value : value_field;
  signal bytes_side_d, bytes_side : side_field;
  signal used : std_logic_vector(blocks - 2 downto 0);
  signal bytes_d, bytes : std_logic_vector(2 downto 0);

  -- coarse
  signal coarse_d, coarse : value_field;
  signal coarse_side : side_field;
  signal coarse_bytes : std_logic_vector(2 downto 0);

  -- bits
  signal bits_d : std_logic_vector(2 downto 0);
  signal bits_value : value_field;
  signal bits_side : side_field;
  signal bits_zeros_d, bits_zeros : std_logic_vector(5 downto 0);

  -- fine
  signal normal_d : value_field;
begin
  assert width >= 8 and width <= 63 report "xfc_normalize: width is 8 to 63" severity failure;

  -- bytes
  padding <= (others => fill);
  bytes_value_d <= value & padding;
  bytes_side_d <= fill & beside;
  block_of : for i in 1 to blocks - 1 generate
    used(i - 1) <= '1' when bytes_value_d(8 * i + 7 downto 8 * i) /= empty else '0';
  end generate;
  count_bytes : entity work.xfc_leading_zeros generic map (blocks - 1, 3) port map (used, bytes_d);

  bytes_0 : entity work.xfc_register generic map (padded, bytes_border)
    port map (sysclk, enable, bytes_value_d, bytes_value);
  bytes_1 : entity work.xfc_register generic map (side + 1, bytes_border)
    port map (sysclk, enable, bytes_side_d, bytes_side);
  bytes_2 : entity work.xfc_register generic map (3, bytes_border) port map (sysclk, enable, bytes_d, bytes);

  -- coarse
  shift_coarse : entity work.xfc_shift_left generic map (padded, 3, 8)
    port map (bytes_value, bytes, bytes_side(side), coarse_d);

  coarse_0 : entity work.xfc_register generic map (padded, coarse_border) port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (side + 1, coarse_border)
    port map (sysclk, enable, bytes_side, coarse_side);
  coarse_2 : entity work.xfc_register generic map (3, coarse_border) port map (sysclk, enable, bytes, coarse_bytes);

  -- bits
  count_bits : entity work.xfc_leading_zeros generic map (7, 3)
    port map (coarse(padded - 1 downto padded - 7), bits_d);
  bits_zeros_d <= coarse_bytes & bits_d;

  bits_0 : entity work.xfc_register generic map (padded, bits_border) port map (sysclk, enable, coarse, bits_value);
  bits_1 : entity work.xfc_register generic map (side + 1, bits_border)
    port map (sysclk, enable, coarse_side, bits_side);
  bits_2 : entity work.xfc_register generic map (6, bits_border)
    port map (sysclk, enable, bits_zeros_d, bits_zeros);

  -- fine
  shift_fine : entity work.xfc_shift_left generic map (padded, 3, 1)
    port map (bits_value, bits_zeros(2 downto 0), bits_side(side), normal_d);

  fine_0 : entity work.xfc_register generic map (padded, fine_border) port map (sysclk, enable, normal_d, normal);
  fine_1 : entity work.xfc_register generic map (side, fine_border)
    port map (sysclk, enable, bits_side(side - 1 downto 0), passed);
  fine_2 : entity work.xfc_register generic map (6, fine_border) port map (sysclk, enable, bits_zeros, zeros);
end rtl;
