-- The exponential of an IEEE single, within 0.63 ulp. Subnormal operands are zero; results below the smallest normal
-- number are 0.
--   step scale:    the significand times log2(e), its triple a constant
--   step coarse:   shift to a fixed point by whole bytes; a zero is shifted out
--   step fine:     shift by single bits; a negative number is inverted, one unit below as the truncated positive one
--   step look_up:  coefficients of the fraction's segment, whose value is level + slope * u + curve * u ** 2
--   step bend:     curve times the high bits of the position
--   step slope:    slope plus bend
--   step rise:     that times the position
--   step settle:   level plus rise; half a unit of the result is in level, so the lower bits are dropped
--   step pack:     the whole number and a value of 2 make the exponent; marks
-- Latency 16 cycles. README.md has the bound of the error.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity fp_exp is
  generic (synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        signin      : in std_logic;
        exponentin  : in std_logic_vector(8 downto 1);
        mantissain  : in std_logic_vector(23 downto 1);
        signout     : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_exp;

architecture rtl of fp_exp is
  constant exponent_bits : positive := 8;
  constant fraction_bits : positive := 23;
  constant scale_bits    : positive := 36;             -- of log2(e), one before the point
  constant product_bits  : positive := scale_bits + fraction_bits + 1;
  constant whole_bits    : positive := 8;              -- of the fixed point, without sign
  constant segment_bits  : positive := 7;
  constant position_bits : positive := 21;
  constant fixed_bits    : positive := whole_bits + segment_bits + position_bits;
  constant short_bits    : positive := 12;             -- of the position, for the curve
  constant level_bits    : positive := 27;             -- behind the point
  constant slope_bits    : positive := 21;
  constant curve_bits    : positive := 12;
  constant wide_bits     : positive := exponent_bits + 2;   -- exponent below zero and above the field
  constant fine_levels   : positive := 3;              -- distances below 8
  constant coarse_levels : positive := 3;
  constant largest       : positive := 133;            -- exponent field of the operands from 64 to 128
  constant mark_bits     : positive := 3;              -- nan, beyond the range of exponents, negative
  constant scale_borders : natural := 30;              -- behind each of four levels; the multiples are constants
  constant scale_cycles  : natural := 4;
  constant bend_borders  : natural := 10;              -- behind the first and the third level
  constant bend_cycles   : natural := 2;
  constant rise_borders  : natural := 30;
  constant rise_cycles   : natural := 4;

  constant operand_bits  : positive := 1 + exponent_bits + fraction_bits;
  constant row_bits      : positive := level_bits + slope_bits + curve_bits;
  constant distance_bits : positive := coarse_levels + fine_levels;
  subtype distance_field is std_logic_vector(distance_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(mark_bits - 1 downto 0);
  subtype fixed_field is std_logic_vector(fixed_bits downto 0);
  subtype position_field is std_logic_vector(position_bits - 1 downto 0);
  subtype short_field is std_logic_vector(short_bits - 1 downto 0);

  -- scale
  signal zero, beyond, far, fractional, top : std_logic;
  signal difference : std_logic_vector(exponent_bits downto 0);
  signal distance_d, distance : distance_field;
  signal marks_d, scale_marks : mark_field;
  signal significand : std_logic_vector(fraction_bits downto 0);
  signal log2_e : std_logic_vector(scale_bits - 1 downto 0);
  signal triple_log2_e : std_logic_vector(scale_bits + 1 downto 0);
  signal product : std_logic_vector(product_bits - 1 downto 0);

  -- coarse
  signal product_fixed, coarse_d, coarse : fixed_field;
  signal coarse_lost : std_logic;
  signal fine_distance : std_logic_vector(fine_levels - 1 downto 0);
  signal coarse_marks : mark_field;

  -- fine
  signal shifted, fixed_d, fixed : fixed_field;
  signal fine_lost : std_logic;
  signal pack_marks : std_logic_vector(1 downto 0);

  -- look_up
  signal row_d, row : std_logic_vector(row_bits - 1 downto 0);
  signal short_d, short : short_field;
  signal triple_short_d, triple_short : std_logic_vector(short_bits + 1 downto 0);
  signal position : position_field;
  signal pack_whole : std_logic_vector(whole_bits downto 0);

  -- bend
  signal bend : std_logic_vector(short_bits + curve_bits - 1 downto 0);
  signal linear : std_logic_vector(slope_bits - 1 downto 0);
  signal bend_position : position_field;

  -- slope
  signal slope_d, slope : std_logic_vector(slope_bits - 1 downto 0);
  signal triple_position_d, triple_position : std_logic_vector(position_bits + 1 downto 0);
  signal slope_position : position_field;

  -- rise
  signal rise : std_logic_vector(position_bits + slope_bits - 1 downto 0);
  signal rise_level : std_logic_vector(level_bits - 1 downto 0);

  -- settle
  signal level_d : std_logic_vector(level_bits downto 0);
  signal level : std_logic_vector(fraction_bits downto 0);

  -- pack
  signal two : unsigned(0 downto 0);
  signal result_exponent : unsigned(wide_bits - 1 downto 0);   -- two's complement
  signal negative, too_small, too_large, nan, sat, zip : std_logic;
  signal packed_d, packed : std_logic_vector(operand_bits - 1 downto 0);
begin
  assert synthesize <= 1 report "fp_exp: synthesize is 0 or 1" severity failure;

  -- scale
  zero <= '1' when unsigned(exponentin) = 0 else '0';
  top <= '1' when unsigned(exponentin) = 255 else '0';
  fractional <= '1' when unsigned(mantissain) /= 0 else '0';
  beyond <= '1' when unsigned(exponentin) > largest else '0';
  difference <= std_logic_vector(to_unsigned(largest, exponent_bits + 1) - unsigned(exponentin));
  far <= '1' when zero = '1' or unsigned(difference(exponent_bits - 1 downto distance_bits)) /= 0 else '0';
  distance_d <= (others => '1') when far = '1' else difference(distance_bits - 1 downto 0);
  marks_d <= (top and fractional) & beyond & signin;
  significand <= '1' & mantissain;
  log2_e(35 downto 32) <= X"B";
  log2_e(31 downto 0) <= X"8AA3B296";
  triple_log2_e(37 downto 32) <= "100010";
  triple_log2_e(31 downto 0) <= X"9FEB17C2";
  scale_product : entity work.xfc_unsigned_product
    generic map (scale_bits, fraction_bits + 1, scale_borders, synthesize)
    port map (sysclk, enable, log2_e, triple_log2_e, significand, product);

  scale_0 : entity work.xfc_registers generic map (distance_bits, scale_cycles)
    port map (sysclk, enable, distance_d, distance);
  scale_1 : entity work.xfc_registers generic map (mark_bits, scale_cycles)
    port map (sysclk, enable, marks_d, scale_marks);

  -- coarse
  product_fixed <= '0' & product(product_bits - 1 downto product_bits - fixed_bits);
  shift_coarse : entity work.xfc_shift_right generic map (fixed_bits + 1, coarse_levels, 2 ** fine_levels)
    port map (product_fixed, distance(distance_bits - 1 downto fine_levels), '0', coarse_d, coarse_lost);

  coarse_0 : entity work.xfc_register generic map (fixed_bits + 1, 1) port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (fine_levels, 1)
    port map (sysclk, enable, distance(fine_levels - 1 downto 0), fine_distance);
  coarse_2 : entity work.xfc_register generic map (mark_bits, 1)
    port map (sysclk, enable, scale_marks, coarse_marks);

  -- fine
  shift_fine : entity work.xfc_shift_right generic map (fixed_bits + 1, fine_levels, 1)
    port map (coarse, fine_distance, '0', shifted, fine_lost);
  fixed_d <= not shifted when coarse_marks(0) = '1' else shifted;   -- two's complement

  fine_0 : entity work.xfc_register generic map (fixed_bits + 1, 1) port map (sysclk, enable, fixed_d, fixed);
  fine_1 : entity work.xfc_registers generic map (2, bend_cycles + rise_cycles + 4)
    port map (sysclk, enable, coarse_marks(2 downto 1), pack_marks);

  -- look_up
  coefficients : entity work.fp_exp_table
    port map (fixed(position_bits + segment_bits - 1 downto position_bits), row_d);
  short_d <= fixed(position_bits - 1 downto position_bits - short_bits);
  triple_short_d <= std_logic_vector(resize(unsigned(short_d), short_bits + 2) + unsigned(short_d & '0'));

  look_up_0 : entity work.xfc_register generic map (row_bits, 1) port map (sysclk, enable, row_d, row);
  look_up_1 : entity work.xfc_register generic map (short_bits + 2, 1)
    port map (sysclk, enable, triple_short_d, triple_short);
  look_up_2 : entity work.xfc_register generic map (position_bits, 1)
    port map (sysclk, enable, fixed(position_bits - 1 downto 0), position);
  look_up_3 : entity work.xfc_registers generic map (whole_bits + 1, bend_cycles + rise_cycles + 3)
    port map (sysclk, enable, fixed(fixed_bits downto position_bits + segment_bits), pack_whole);
  short <= position(position_bits - 1 downto position_bits - short_bits);

  -- bend
  bend_product : entity work.xfc_unsigned_product generic map (short_bits, curve_bits, bend_borders, synthesize)
    port map (sysclk, enable, short, triple_short, row(curve_bits - 1 downto 0), bend);

  bend_0 : entity work.xfc_registers generic map (slope_bits, bend_cycles)
    port map (sysclk, enable, row(slope_bits + curve_bits - 1 downto curve_bits), linear);
  bend_1 : entity work.xfc_registers generic map (position_bits, bend_cycles)
    port map (sysclk, enable, position, bend_position);

  -- slope
  slope_d <= std_logic_vector(unsigned(linear) + unsigned(bend(short_bits + curve_bits - 1 downto short_bits)));
  triple_position_d <=
    std_logic_vector(resize(unsigned(bend_position), position_bits + 2) + unsigned(bend_position & '0'));

  slope_0 : entity work.xfc_register generic map (slope_bits, 1) port map (sysclk, enable, slope_d, slope);
  slope_1 : entity work.xfc_register generic map (position_bits, 1)
    port map (sysclk, enable, bend_position, slope_position);
  slope_2 : entity work.xfc_register generic map (position_bits + 2, 1)
    port map (sysclk, enable, triple_position_d, triple_position);

  -- rise
  rise_product : entity work.xfc_unsigned_product generic map (position_bits, slope_bits, rise_borders, synthesize)
    port map (sysclk, enable, slope_position, triple_position, slope, rise);

  rise_0 : entity work.xfc_registers generic map (level_bits, bend_cycles + 1 + rise_cycles)
    port map (sysclk, enable, row(row_bits - 1 downto slope_bits + curve_bits), rise_level);

  -- settle
  level_d <= std_logic_vector(resize(unsigned(rise_level), level_bits + 1)
                              + unsigned(rise(position_bits + slope_bits - 1 downto position_bits)));

  settle_0 : entity work.xfc_register generic map (fraction_bits + 1, 1)
    port map (sysclk, enable, level_d(level_bits downto level_bits - fraction_bits), level);

  -- pack
  two(0) <= level(fraction_bits);
  negative <= pack_whole(whole_bits);
  result_exponent <= unsigned(resize(signed(pack_whole), wide_bits)) + to_unsigned(127, wide_bits) + two;
  too_small <= '1' when result_exponent(wide_bits - 1) = '1' or result_exponent = 0 else '0';
  too_large <= '1' when result_exponent(exponent_bits) = '1' or result_exponent(exponent_bits - 1 downto 0) = 255
               else '0';
  nan <= pack_marks(1);
  sat <= not negative and (pack_marks(0) or too_large);
  zip <= negative and (pack_marks(0) or too_small);
  packed_d(31) <= '0';
  packed_d(30 downto fraction_bits) <= (others => '1') when (nan or sat) = '1' else
                                       (others => '0') when zip = '1' else
                                       std_logic_vector(result_exponent(exponent_bits - 1 downto 0));
  packed_d(fraction_bits - 1) <= '1' when nan = '1' else level(fraction_bits - 1) and not sat and not zip;
  packed_d(fraction_bits - 2 downto 0) <= (others => '0') when (nan or sat or zip) = '1' else
                                          level(fraction_bits - 2 downto 0);

  pack_0 : entity work.xfc_register generic map (operand_bits, 1) port map (sysclk, enable, packed_d, packed);
  signout <= packed(operand_bits - 1);
  exponentout <= packed(operand_bits - 2 downto fraction_bits);
  mantissaout <= packed(fraction_bits - 1 downto 0);
end rtl;
