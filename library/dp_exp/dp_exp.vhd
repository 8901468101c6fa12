-- The exponential of an IEEE double, within 0.53 ulp. Subnormal operands are zero; results below the smallest normal
-- number are 0.
--   step coarse:   the significand shifted right to a fixed point by whole bytes; a zero is shifted out
--   step fine:     by single bits; a negative number is inverted, one unit below as the truncated positive one
--   step whole:    the power of two, from the fixed point's high bits: at most 0.38 below the exact exponent
--   step power:    its logarithm
--   step reduce:   the operand less that, from 0 to 0.96: two indices of 9 bits and a rest below 2 ** -18
--   step look_up:  exponentials of the indices (of the lower one less 1); a sixth of the rest's cube
--   step square:   half the rest's square
--   step small:    exponential of the rest, less 1
--   step mixed:    that times the lower exponential, less 1
--   step factor:   both and that: exponential of all below the higher index, less 1
--   step rise:     the higher exponential times that
--   step add:      the higher exponential and that
--   step round:    to nearest, into the exponent; a sum of 2 and more is halved
--   step pack:     marks
-- Latency 20 + 2 doublespeed + (roundconvert - 2 device) (1 + doublespeed) cycles, 14 to 24: the more there are, the
-- more borders the products have. The generics change no result. README.md has the bound of the error.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity dp_exp is
  generic (roundconvert   : natural;
           doubleaccuracy : natural;
           doublespeed    : natural;
           device         : natural;
           synthesize     : natural);
  port (sysclk, reset, enable : in std_logic;
        signin      : in std_logic;
        exponentin  : in std_logic_vector(11 downto 1);
        mantissain  : in std_logic_vector(52 downto 1);
        signout     : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_exp;

architecture rtl of dp_exp is
  constant exponent_bits    : positive := 11;
  constant fraction_bits    : positive := 52;
  constant significand_bits : positive := fraction_bits + 1;
  constant operand_bits     : positive := 1 + exponent_bits + fraction_bits;
  constant wide_bits        : positive := exponent_bits + 2;   -- exponent below zero and above the field
  constant point_bits       : positive := 61;       -- of the fixed point, behind the point
  constant fixed_bits       : positive := 71;       -- of its magnitude
  constant largest          : positive := 1032;     -- exponent field of the operands from 512 to 1024
  constant coarse_levels    : positive := 4;
  constant fine_levels      : positive := 3;        -- distances below 8
  constant distance_bits    : positive := coarse_levels + fine_levels;
  constant mark_bits        : positive := 3;        -- nan, beyond the range of exponents, negative
  constant top_bits         : positive := 13;       -- of the fixed point, two behind the point
  constant log2_e_bits      : positive := 15;
  constant log2_e           : positive := 23637;    -- a quarter of it, units of 2 ** -16
  constant whole_bits       : positive := 12;
  constant whole_low        : positive := 16;       -- lowest bit of the whole power in the product
  constant whole_offset     : positive := 44564;    -- 1478 less 1024 log2(e), units of 2 ** -16
  constant whole_bias       : positive := 455;      -- whole power, plus 1478, less the exponent field
  constant ln_2_bits        : positive := 73;       -- behind the point
  constant segment_bits     : positive := 9;
  constant rest_bits        : positive := point_bits - 2 * segment_bits;
  constant cubic_bits       : positive := 6;        -- of the rest for its cube, and of the sixth of that
  constant short_bits       : positive := 26;       -- of the rest for its square
  constant square_low       : positive := 27;       -- lowest bit of the square that counts
  constant small_bits       : positive := rest_bits + 2;   -- units of 2 ** -62
  constant mixed_bits       : positive := 36;       -- of both factors of the mixed product, and of it
  constant high_bits        : positive := 62;       -- units of 2 ** -60
  constant low_bits         : positive := 52;       -- units of 2 ** -60
  constant factor_bits      : positive := low_bits + 1;    -- units of 2 ** -61
  constant short_high_bits  : positive := 54;       -- of the higher exponential, for the product, and of that
  constant low_round_bit    : positive := 7;        -- of a sum below 2

  -- Cycles beyond the fewest go behind levels of the products' trees that had no register of their own.
  constant extra : natural := (roundconvert - 2 * device) * (doublespeed + 1) + 2 * doublespeed + 6;
  constant whole_borders  : natural := 8 * boolean'pos(extra > 5) + 2 * boolean'pos(extra > 8);
  constant whole_cycles   : natural := boolean'pos(extra > 5) + boolean'pos(extra > 8);
  constant power_borders  : natural := 8 + 2 * boolean'pos(extra > 2);
  constant power_cycles   : natural := 1 + boolean'pos(extra > 2);
  constant square_borders : natural := 16 + 4 * boolean'pos(extra > 4) + 6 * boolean'pos(extra > 7);
  constant square_cycles  : natural := 1 + boolean'pos(extra > 4) + boolean'pos(extra > 7);
  constant mixed_borders  : natural := 32 + 4 * boolean'pos(extra > 1) + 6 * boolean'pos(extra > 6);
  constant mixed_cycles   : natural := 1 + boolean'pos(extra > 1) + boolean'pos(extra > 6);
  constant rise_borders   : natural :=
    32 + 4 * boolean'pos(extra > 0) + 6 * boolean'pos(extra > 3) + 16 * boolean'pos(extra > 9);
  constant rise_cycles    : natural := 1 + boolean'pos(extra > 0) + boolean'pos(extra > 3) + boolean'pos(extra > 9);
  constant factor_cycles  : natural := square_cycles + 1 + mixed_cycles + 1;   -- from the tables to the factor
  constant round_cycles   : natural := factor_cycles + rise_cycles + 1;        -- from the tables to the sum

  subtype mark_field is std_logic_vector(mark_bits - 1 downto 0);
  subtype fixed_field is std_logic_vector(fixed_bits downto 0);
  subtype point_field is std_logic_vector(point_bits - 1 downto 0);
  subtype wide_field is std_logic_vector(wide_bits - 1 downto 0);
  subtype high_field is std_logic_vector(high_bits - 1 downto 0);
  subtype low_field is std_logic_vector(low_bits - 1 downto 0);
  subtype cubic_field is std_logic_vector(cubic_bits - 1 downto 0);
  subtype rest_field is std_logic_vector(rest_bits - 1 downto 0);
  subtype small_field is std_logic_vector(small_bits - 1 downto 0);
  subtype factor_field is std_logic_vector(factor_bits - 1 downto 0);
  subtype rounded_field is std_logic_vector(wide_bits + fraction_bits - 1 downto 0);

  -- coarse
  signal zero, beyond, top_exponent, fractional, far : std_logic;
  signal difference : unsigned(exponent_bits downto 0);
  signal distance : std_logic_vector(distance_bits - 1 downto 0);
  signal marks_d, coarse_marks : mark_field;
  signal coarse_operand, coarse_d, coarse : fixed_field;
  signal coarse_lost : std_logic;
  signal fine_distance : std_logic_vector(fine_levels - 1 downto 0);

  -- fine
  signal shifted, fixed_d, fixed : fixed_field;
  signal fine_lost : std_logic;
  signal pack_marks : mark_field;

  -- whole
  signal top : std_logic_vector(top_bits - 1 downto 0);
  signal log2_e_field : std_logic_vector(log2_e_bits - 1 downto 0);
  signal triple_log2_e : std_logic_vector(log2_e_bits + 1 downto 0);
  signal scaled, whole_d : std_logic_vector(whole_bits + whole_low - 1 downto 0);
  signal offset, positive_d, positive_operand, operand : point_field;
  signal whole : std_logic_vector(whole_bits - 1 downto 0);

  -- power
  signal ln_2 : std_logic_vector(ln_2_bits - 1 downto 0);
  signal triple_ln_2 : std_logic_vector(ln_2_bits + 1 downto 0);
  signal power : std_logic_vector(ln_2_bits + whole_bits - 1 downto 0);
  signal exponent_d, round_exponent : wide_field;

  -- reduce
  signal reduced_d, reduced : point_field;

  -- look_up
  signal high_d, high : high_field;
  signal low_d, low : low_field;
  signal cubic_d, cubic : cubic_field;
  signal rest_d, rest : rest_field;

  -- square
  signal square : std_logic_vector(2 * short_bits - 1 downto 0);
  signal others_d, other_terms : small_field;
  signal early_low, small_low : low_field;

  -- small
  signal small_d, small_rest : small_field;

  -- mixed
  signal mixed : std_logic_vector(2 * mixed_bits - 1 downto 0);
  signal both_d, both : factor_field;

  -- factor
  signal factor_d, factor : factor_field;
  signal early_high, add_high : high_field;

  -- rise
  signal rise : std_logic_vector(short_high_bits + factor_bits - 1 downto 0);

  -- add
  signal sum_d : high_field;
  signal sum : std_logic_vector(high_bits - 1 downto low_round_bit);

  -- round
  signal two, up : std_logic;
  signal fraction : std_logic_vector(fraction_bits - 1 downto 0);
  signal increments, rounded_d, rounded : rounded_field;

  -- pack
  signal ieee_marks : std_logic_vector(3 downto 0);   -- sign, nan, zip, sat
  signal packed_d, packed : std_logic_vector(operand_bits - 1 downto 0);
begin
  assert roundconvert <= 1 report "dp_exp: roundconvert is 0 or 1" severity failure;
  assert doubleaccuracy <= 1 report "dp_exp: doubleaccuracy is 0 or 1" severity failure;
  assert doublespeed <= 1 report "dp_exp: doublespeed is 0 or 1" severity failure;
  assert device <= 2 report "dp_exp: device is 0 to 2" severity failure;
  assert synthesize <= 1 report "dp_exp: synthesize is 0 or 1" severity failure;

  -- coarse
  zero <= '1' when unsigned(exponentin) = 0 else '0';
  beyond <= '1' when unsigned(exponentin) > largest else '0';
  top_exponent <= '1' when unsigned(not exponentin) = 0 else '0';
  fractional <= '1' when unsigned(mantissain) /= 0 else '0';
  difference <= to_unsigned(largest, exponent_bits + 1) - resize(unsigned(exponentin), exponent_bits + 1);
  far <= '1' when zero = '1' or (beyond = '0' and difference(exponent_bits downto distance_bits) /= 0) else '0';
  distance <= (others => '1') when far = '1' else std_logic_vector(difference(distance_bits - 1 downto 0));
  marks_d <= (top_exponent and fractional) & beyond & signin;
  coarse_operand(fixed_bits downto fixed_bits - 1) <= "01";
  coarse_operand(fixed_bits - 2 downto fixed_bits - significand_bits) <= mantissain;
  coarse_operand(fixed_bits - significand_bits - 1 downto 0) <= (others => '0');
  shift_coarse : entity work.xfc_shift_right generic map (fixed_bits + 1, coarse_levels, 2 ** fine_levels)
    port map (coarse_operand, distance(distance_bits - 1 downto fine_levels), '0', coarse_d, coarse_lost);

  coarse_0 : entity work.xfc_register generic map (fixed_bits + 1, 1) port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (fine_levels, 1)
    port map (sysclk, enable, distance(fine_levels - 1 downto 0), fine_distance);
  coarse_2 : entity work.xfc_register generic map (mark_bits, 1) port map (sysclk, enable, marks_d, coarse_marks);

  -- fine
  shift_fine : entity work.xfc_shift_right generic map (fixed_bits + 1, fine_levels, 1)
    port map (coarse, fine_distance, '0', shifted, fine_lost);
  fixed_d <= not shifted when coarse_marks(0) = '1' else shifted;   -- two's complement

  fine_0 : entity work.xfc_register generic map (fixed_bits + 1, 1) port map (sysclk, enable, fixed_d, fixed);
  fine_1 : entity work.xfc_registers generic map (mark_bits, whole_cycles + power_cycles + round_cycles + 5)
    port map (sysclk, enable, coarse_marks, pack_marks);

  -- whole: 1024 more than the operand, times log2(e)
  top <= not fixed(fixed_bits) & fixed(fixed_bits - 1 downto fixed_bits - top_bits + 1);
  log2_e_field <= std_logic_vector(to_unsigned(log2_e, log2_e_bits));
  triple_log2_e <= std_logic_vector(to_unsigned(3 * log2_e, log2_e_bits + 2));
  whole_product : entity work.xfc_unsigned_product generic map (log2_e_bits, top_bits, whole_borders, synthesize)
    port map (sysclk, enable, log2_e_field, triple_log2_e, top, scaled);
  whole_d <= std_logic_vector(unsigned(scaled) + whole_offset);
  offset(60 downto 32) <= '0' & x"F16CC18";   -- 1478 ln(2) without what is before the point
  offset(31 downto 0) <= x"AA7B0EBA";
  positive_d <= std_logic_vector(unsigned(fixed(point_bits - 1 downto 0)) + unsigned(offset));

  whole_0 : entity work.xfc_register generic map (whole_bits, 1)
    port map (sysclk, enable, whole_d(whole_bits + whole_low - 1 downto whole_low), whole);
  whole_1 : entity work.xfc_register generic map (point_bits, 1)
    port map (sysclk, enable, positive_d, positive_operand);
  whole_2 : entity work.xfc_registers generic map (point_bits, whole_cycles + power_cycles)
    port map (sysclk, enable, positive_operand, operand);

  -- power: what is before the point takes no part
  ln_2(72 downto 64) <= '1' & x"62";
  ln_2(63 downto 32) <= x"E42FEFA3";
  ln_2(31 downto 0) <= x"9EF35794";
  triple_ln_2(74 downto 64) <= "100" & x"28";
  triple_ln_2(63 downto 32) <= x"AC8FCEEA";
  triple_ln_2(31 downto 0) <= x"DCDA06BC";
  power_product : entity work.xfc_unsigned_product generic map (ln_2_bits, whole_bits, power_borders, synthesize)
    port map (sysclk, enable, ln_2, triple_ln_2, whole, power);
  exponent_d <= std_logic_vector(resize(unsigned(whole), wide_bits) - whole_bias);   -- two's complement

  power_0 : entity work.xfc_registers generic map (wide_bits, power_cycles + round_cycles + 2)
    port map (sysclk, enable, exponent_d, round_exponent);

  -- reduce
  reduced_d <= std_logic_vector(unsigned(operand) - unsigned(power(ln_2_bits - 1 downto ln_2_bits - point_bits)));

  reduce_0 : entity work.xfc_register generic map (point_bits, 1) port map (sysclk, enable, reduced_d, reduced);

  -- look_up
  rest_d <= reduced(rest_bits - 1 downto 0);
  high_exponential : entity work.dp_exp_high_table
    port map (reduced(point_bits - 1 downto point_bits - segment_bits), high_d);
  low_exponential : entity work.dp_exp_low_table
    port map (reduced(point_bits - segment_bits - 1 downto rest_bits), low_d);
  sixth_of_cube : entity work.dp_exp_cubic_table
    port map (rest_d(rest_bits - 1 downto rest_bits - cubic_bits), cubic_d);

  look_up_0 : entity work.xfc_register generic map (high_bits, 1) port map (sysclk, enable, high_d, high);
  look_up_1 : entity work.xfc_register generic map (low_bits, 1) port map (sysclk, enable, low_d, low);
  look_up_2 : entity work.xfc_register generic map (cubic_bits, 1) port map (sysclk, enable, cubic_d, cubic);
  look_up_3 : entity work.xfc_register generic map (rest_bits, 1) port map (sysclk, enable, rest_d, rest);

  -- square
  square_product : entity work.xfc_early_product generic map (short_bits, short_bits, square_borders, synthesize)
    port map (sysclk, enable, rest_d(rest_bits - 1 downto rest_bits - short_bits),
              rest(rest_bits - 1 downto rest_bits - short_bits), square);
  others_d <= std_logic_vector(unsigned('0' & rest & '0') + unsigned(cubic));

  square_0 : entity work.xfc_registers generic map (small_bits, square_cycles)
    port map (sysclk, enable, others_d, other_terms);
  square_1 : entity work.xfc_registers generic map (low_bits, square_cycles) port map (sysclk, enable, low, early_low);

  -- small
  small_d <= std_logic_vector(unsigned(other_terms) + unsigned(square(2 * short_bits - 1 downto square_low)));

  small_0 : entity work.xfc_register generic map (small_bits, 1) port map (sysclk, enable, small_d, small_rest);
  small_1 : entity work.xfc_register generic map (low_bits, 1) port map (sysclk, enable, early_low, small_low);

  -- mixed
  mixed_product : entity work.xfc_early_product generic map (mixed_bits, mixed_bits, mixed_borders, synthesize)
    port map (sysclk, enable, early_low(low_bits - 1 downto low_bits - mixed_bits),
              small_rest(small_bits - 1 downto small_bits - mixed_bits), mixed);
  both_d <= std_logic_vector(unsigned(small_low & '0') + unsigned(small_rest(small_bits - 1 downto 1)));

  mixed_0 : entity work.xfc_registers generic map (factor_bits, mixed_cycles)
    port map (sysclk, enable, both_d, both);

  -- factor
  factor_d <= std_logic_vector(unsigned(both) + unsigned(mixed(2 * mixed_bits - 1 downto mixed_bits)));

  factor_0 : entity work.xfc_register generic map (factor_bits, 1) port map (sysclk, enable, factor_d, factor);
  factor_1 : entity work.xfc_registers generic map (high_bits, factor_cycles - 1)
    port map (sysclk, enable, high, early_high);

  -- rise
  rise_product : entity work.xfc_early_product
    generic map (short_high_bits, factor_bits, rise_borders, synthesize)
    port map (sysclk, enable, early_high(high_bits - 1 downto high_bits - short_high_bits), factor, rise);

  rise_0 : entity work.xfc_registers generic map (high_bits, rise_cycles + 1)
    port map (sysclk, enable, early_high, add_high);

  -- add
  sum_d <= std_logic_vector(unsigned(add_high)
                            + unsigned(rise(short_high_bits + factor_bits - 1 downto factor_bits)));

  add_0 : entity work.xfc_register generic map (high_bits - low_round_bit, 1)
    port map (sysclk, enable, sum_d(high_bits - 1 downto low_round_bit), sum);

  -- round
  two <= sum(high_bits - 1);
  fraction <= sum(high_bits - 2 downto low_round_bit + 2) when two = '1' else
              sum(high_bits - 3 downto low_round_bit + 1);
  up <= sum(low_round_bit + 1) when two = '1' else sum(low_round_bit);
  increments(wide_bits + fraction_bits - 1 downto fraction_bits + 1) <= (others => '0');
  increments(fraction_bits) <= two;
  increments(fraction_bits - 1 downto 1) <= (others => '0');
  increments(0) <= up;
  rounded_d <= std_logic_vector(unsigned(round_exponent & fraction) + unsigned(increments));

  round_0 : entity work.xfc_register generic map (wide_bits + fraction_bits, 1)
    port map (sysclk, enable, rounded_d, rounded);

  -- pack
  ieee_marks <= '0' & pack_marks(2) & (pack_marks(1) and pack_marks(0)) & (pack_marks(1) and not pack_marks(0));
  pack_result : entity work.xfc_pack_ieee generic map (exponent_bits, fraction_bits, wide_bits)
    port map (rounded(wide_bits + fraction_bits - 1 downto fraction_bits), rounded(fraction_bits - 1 downto 0),
              ieee_marks, packed_d);

  pack_0 : entity work.xfc_register generic map (operand_bits, 1) port map (sysclk, enable, packed_d, packed);
  signout <= packed(operand_bits - 1);
  exponentout <= packed(operand_bits - 2 downto fraction_bits);
  mantissaout <= packed(fraction_bits - 1 downto 0);
end rtl;
