-- One over the square root of an IEEE single, within 0.67 ulp. Subnormal operands are zero; zero gives infinity with
-- its sign, infinity gives 0, a negative operand nan.
--   step arrive:   the operand, in cycles that the steps behind have no use for
--   step unpack:   marks; segment and position in it; the exponent of the result, one lower
--   step look_up:  coefficients of the segment, whose value is level - slope * u + curve * u ** 2
--   step bend:     slope less curve times the high bits of the position
--   step fall:     level less that times the position; half a unit of the result is in level, so the lower bits are
--                  dropped
--   step pack:     the value of 2 goes into the exponent; marks
-- Latency 19 cycles. README.md has the bound of the error.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity fp_invsqr is
  generic (synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        signin      : in std_logic;
        exponentin  : in std_logic_vector(8 downto 1);
        mantissain  : in std_logic_vector(23 downto 1);
        signout     : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_invsqr;

architecture rtl of fp_invsqr is
  constant exponent_bits : positive := 8;
  constant fraction_bits : positive := 23;
  constant segment_bits  : positive := 7;
  constant position_bits : positive := fraction_bits - segment_bits;
  constant short_bits    : positive := 12;       -- of the position, for the curve
  constant level_bits    : positive := 28;       -- one before the point
  constant slope_bits    : positive := 21;
  constant curve_bits    : positive := 13;
  constant mark_bits     : positive := 4;        -- sign, nan, zip, sat
  constant arrive_cycles : natural := 5;
  constant bend_borders  : natural := 15;        -- behind the multiples and behind each of three levels
  constant bend_cycles   : natural := 4;
  constant fall_borders  : natural := 31;
  constant fall_cycles   : natural := 5;
  constant side_cycles   : natural := bend_cycles + fall_cycles + 3;

  constant operand_bits : positive := 1 + exponent_bits + fraction_bits;
  constant row_bits     : positive := level_bits + slope_bits + curve_bits;
  subtype mark_field is std_logic_vector(mark_bits - 1 downto 0);
  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);

  -- arrive
  signal arrive_d, operand : std_logic_vector(operand_bits - 1 downto 0);
  signal sign : std_logic;
  signal exponent : exponent_field;
  signal fraction : fraction_field;

  -- unpack
  signal zero, top, fractional : std_logic;
  signal marks_d, pack_marks : mark_field;
  signal index_d, index : std_logic_vector(segment_bits downto 0);
  signal twice_d : std_logic_vector(exponent_bits downto 0);
  signal position : std_logic_vector(position_bits - 1 downto 0);
  signal pack_exponent : exponent_field;

  -- look_up
  signal row_d, row : std_logic_vector(row_bits - 1 downto 0);

  -- bend, fall
  signal all_level : std_logic_vector(level_bits - 1 downto 0);
  signal level : std_logic_vector(fraction_bits downto 0);

  -- pack
  signal two : unsigned(0 downto 0);
  signal nan, zip, sat : std_logic;
  signal result_exponent : exponent_field;
  signal result : fraction_field;
  signal packed_d, packed : std_logic_vector(operand_bits - 1 downto 0);
begin
  assert synthesize <= 1 report "fp_invsqr: synthesize is 0 or 1" severity failure;

  -- arrive
  arrive_d <= signin & exponentin & mantissain;
  arrive_0 : entity work.xfc_registers generic map (operand_bits, arrive_cycles)
    port map (sysclk, enable, arrive_d, operand);
  sign <= operand(operand_bits - 1);
  exponent <= operand(operand_bits - 2 downto fraction_bits);
  fraction <= operand(fraction_bits - 1 downto 0);

  -- unpack: an even power of two has an odd exponent field
  zero <= '1' when unsigned(exponent) = 0 else '0';
  top <= '1' when unsigned(exponent) = 255 else '0';
  fractional <= '1' when unsigned(fraction) /= 0 else '0';
  marks_d <= sign & ((top and fractional) or (sign and not zero)) & top & zero;
  index_d <= not exponent(0) & fraction(fraction_bits - 1 downto position_bits);
  twice_d <= std_logic_vector(to_unsigned(380, exponent_bits + 1) - unsigned(exponent));

  unpack_0 : entity work.xfc_registers generic map (mark_bits, side_cycles + 1)
    port map (sysclk, enable, marks_d, pack_marks);
  unpack_1 : entity work.xfc_register generic map (segment_bits + 1, 1) port map (sysclk, enable, index_d, index);
  unpack_2 : entity work.xfc_register generic map (position_bits, 1)
    port map (sysclk, enable, fraction(position_bits - 1 downto 0), position);
  unpack_3 : entity work.xfc_registers generic map (exponent_bits, side_cycles + 1)
    port map (sysclk, enable, twice_d(exponent_bits downto 1), pack_exponent);

  -- look_up
  coefficients : entity work.fp_invsqr_table port map (index, row_d);

  look_up_0 : entity work.xfc_register generic map (row_bits, 1) port map (sysclk, enable, row_d, row);

  -- bend, fall
  fall : entity work.xfc_quadratic
    generic map (position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, synthesize)
    port map (sysclk, enable, position, row, all_level);
  level <= all_level(level_bits - 1 downto level_bits - fraction_bits - 1);

  -- pack
  two(0) <= level(fraction_bits);
  result_exponent <= std_logic_vector(unsigned(pack_exponent) + two);
  result <= (others => '0') when level(fraction_bits) = '1' else level(fraction_bits - 1 downto 0);
  nan <= pack_marks(2);
  zip <= pack_marks(1);
  sat <= pack_marks(0);
  packed_d(31) <= pack_marks(3) and sat and not nan;
  packed_d(30 downto fraction_bits) <= (others => '1') when (nan or sat) = '1' else
                                       (others => '0') when zip = '1' else result_exponent;
  packed_d(fraction_bits - 1) <= '1' when nan = '1' else result(fraction_bits - 1) and not sat and not zip;
  packed_d(fraction_bits - 2 downto 0) <= (others => '0') when (nan or sat or zip) = '1' else
                                          result(fraction_bits - 2 downto 0);

  pack_0 : entity work.xfc_register generic map (operand_bits, 1) port map (sysclk, enable, packed_d, packed);
  signout <= packed(operand_bits - 1);
  exponentout <= packed(operand_bits - 2 downto fraction_bits);
  mantissaout <= packed(fraction_bits - 1 downto 0);
end rtl;
