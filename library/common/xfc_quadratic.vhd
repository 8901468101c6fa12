-- A quadratic whose coefficients alternate in sign: level - slope * u + curve * u ** 2 for the position u.
--   step bend:  slope less curve times the high bits of the position
--   step fall:  level less that times the position
-- The position comes a cycle before the coefficients. Behind these it takes a cycle for each bit of both borders, told
-- at xfc_unsigned_product, and two more.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_quadratic is
  generic (position_bits : positive;   -- all behind the point
           short_bits    : positive;   -- of the position, for the curve
           level_bits    : positive;
           slope_bits    : positive;
           curve_bits    : positive;
           bend_borders  : natural;
           fall_borders  : natural;
           blocks        : natural);
  port (sysclk, enable : in std_logic;
        early_position : in std_logic_vector(position_bits - 1 downto 0);
        row   : in std_logic_vector(level_bits + slope_bits + curve_bits - 1 downto 0);   -- level, slope, curve
        level : out std_logic_vector(level_bits - 1 downto 0));
end xfc_quadratic;

architecture rtl of xfc_quadratic is
  constant bend_cycles : positive := bend_borders mod 2 + bend_borders / 2 mod 2 + bend_borders / 4 mod 2 +
                                     bend_borders / 8 mod 2 + bend_borders / 16 mod 2 + bend_borders / 32 mod 2 + 1;

  -- bend
  signal slope : std_logic_vector(slope_bits - 1 downto 0);
  signal fall_position : std_logic_vector(position_bits - 1 downto 0);
  signal fall_level : std_logic_vector(level_bits - 1 downto 0);
begin
  -- bend
  bend : entity work.xfc_polynomial_step generic map (short_bits, curve_bits, slope_bits, bend_borders, blocks)
    port map (sysclk, enable, early_position(position_bits - 1 downto position_bits - short_bits),
              row(curve_bits - 1 downto 0), row(curve_bits + slope_bits - 1 downto curve_bits), slope);

  bend_0 : entity work.xfc_registers generic map (position_bits, bend_cycles)
    port map (sysclk, enable, early_position, fall_position);
  bend_1 : entity work.xfc_registers generic map (level_bits, bend_cycles)
    port map (sysclk, enable, row(row'high downto slope_bits + curve_bits), fall_level);

  -- fall
  fall : entity work.xfc_polynomial_step generic map (position_bits, slope_bits, level_bits, fall_borders, blocks)
    port map (sysclk, enable, fall_position, slope, fall_level, level);
end rtl;
