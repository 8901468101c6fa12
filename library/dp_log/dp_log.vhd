-- The natural logarithm of an IEEE double, within 0.53 ulp. Subnormal operands are zero; zero gives -infinity, a
-- negative operand nan, 1 gives +0.
--   step look_up:   x = m * 2 ** whole with m from 0.75 to 1.5; |m - 1|; coefficients of m's segment, where
--                   ln(m) / (m - 1) is c0 - c1 * u + c2 * u ** 2 - c3 * u ** 3 + c4 * u ** 4 - c5 * u ** 5
--   step fourth:    c4 less c5 times the position u
--   step third:     c3 less that times u
--   step second:    c2 less that times u
--   step first:     c1 less that times u
--   step level:     c0 less that times u
--   step zeros:     leading zeros of |m - 1| where the whole power is 0, else none
--   step coarse:    shift |m - 1| left by them, by whole bytes
--   step fine:      by single bits
--   step multiply:  level times |m - 1|; beside it the whole power times ln(2)
--   step add:       both
--   step count:     leading zeros
--   step shift:     shift left by them
--   step round:     to nearest, into the exponent
--   step pack:      marks
-- Latency 27 + 7 doublespeed + roundconvert (1 + doublespeed) cycles, 27 to 36: the more there are, the more borders
-- the products have. zeros, coarse and fine take the last cycles of level. The generics change no result. README.md has
-- the bound of the error.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity dp_log is
  generic (device       : natural;
           doublespeed  : natural;
           synthesize   : natural;
           roundconvert : natural := 0);
  port (sysclk, reset, enable : in std_logic;
        signin      : in std_logic;
        exponentin  : in std_logic_vector(11 downto 1);
        mantissain  : in std_logic_vector(52 downto 1);
        signout     : out std_logic;
        exponentout : out std_logic_vector(11 downto 1);
        mantissaout : out std_logic_vector(52 downto 1));
end dp_log;

architecture rtl of dp_log is
  constant exponent_bits  : positive := 11;
  constant fraction_bits  : positive := 52;
  constant operand_bits   : positive := 1 + exponent_bits + fraction_bits;
  constant bias           : positive := 1023;
  constant whole_bits     : positive := 11;
  constant ln_2_bits      : positive := 73;         -- behind the point
  constant distance_bits  : positive := 52;         -- of |m - 1|, whose units are 2 ** -53
  constant index_bits     : positive := 8;
  constant position_bits  : positive := 45;
  constant c0_bits        : positive := 62;         -- one before the point
  constant c1_bits        : positive := 53;
  constant c2_bits        : positive := 45;
  constant c3_bits        : positive := 37;
  constant c4_bits        : positive := 29;
  constant c5_bits        : positive := 21;
  constant row_bits       : positive := c0_bits + c1_bits + c2_bits + c3_bits + c4_bits + c5_bits;
  constant product_bits   : positive := distance_bits + c0_bits;
  constant point_bits     : positive := 63;         -- of the product and of the sum, behind the point
  constant sum_bits       : positive := 73;
  constant window_bits    : positive := 13;         -- of the sum, that the leading one is in
  constant window_levels  : positive := 4;
  constant zero_levels    : positive := 6;
  constant fine_levels    : positive := 3;          -- distances below 8
  constant coarse_levels  : positive := zero_levels - fine_levels;
  constant first_exponent : positive := 1032;       -- of the sum's highest bit
  constant mark_bits      : positive := 4;          -- negative, nan, zip, infinite

  -- Cycles beyond the fewest go behind levels of the products' trees that had no register of their own.
  constant extra : natural := roundconvert * (doublespeed + 1) + 7 * doublespeed;
  constant fourth_borders   : natural := 20 + 6 * boolean'pos(extra > 4);
  constant fourth_cycles    : natural := 2 + boolean'pos(extra > 4);
  constant third_borders    : natural := 20 + 6 * boolean'pos(extra > 5);
  constant third_cycles     : natural := 2 + boolean'pos(extra > 5);
  constant second_borders   : natural := 42 + 16 * boolean'pos(extra > 3);
  constant second_cycles    : natural := 3 + boolean'pos(extra > 3);
  constant first_borders    : natural := 42 + 16 * boolean'pos(extra > 2) + 4 * boolean'pos(extra > 8);
  constant first_cycles     : natural := 3 + boolean'pos(extra > 2) + boolean'pos(extra > 8);
  constant level_borders    : natural := 42 + 16 * boolean'pos(extra > 1) + 4 * boolean'pos(extra > 7);
  constant level_cycles     : natural := 3 + boolean'pos(extra > 1) + boolean'pos(extra > 7);
  constant multiply_borders : natural := 42 + 16 * boolean'pos(extra > 0) + 4 * boolean'pos(extra > 6);
  constant multiply_cycles  : natural := 3 + boolean'pos(extra > 0) + boolean'pos(extra > 6);
  constant whole_borders    : natural := 10;
  constant whole_cycles     : natural := 2;
  constant normal_cycles    : natural := 3;         -- zeros, coarse and fine
  -- Behind look_up's registers, the cycle from which on the name's value is known.
  constant fourth_cycle     : natural := fourth_cycles + 1;
  constant third_cycle      : natural := fourth_cycle + third_cycles + 1;
  constant second_cycle     : natural := third_cycle + second_cycles + 1;
  constant first_cycle      : natural := second_cycle + first_cycles + 1;
  constant level_cycle      : natural := first_cycle + level_cycles + 1;
  constant product_cycle    : natural := level_cycle + multiply_cycles;

  subtype distance_field is std_logic_vector(distance_bits - 1 downto 0);
  subtype position_field is std_logic_vector(position_bits - 1 downto 0);
  subtype sum_field is std_logic_vector(sum_bits - 1 downto 0);

  -- look_up
  signal zero, top, fractional, below, whole_negative, nan, infinite, zip, negative : std_logic;
  signal power, minus_power : unsigned(whole_bits downto 0);
  signal below_bit : unsigned(0 downto 0);
  signal whole_d, whole : std_logic_vector(whole_bits - 1 downto 0);
  signal whole_zero_d, whole_zero, same_d, same : std_logic_vector(0 downto 0);
  signal distance_d, distance : distance_field;
  signal index : std_logic_vector(index_bits - 1 downto 0);
  signal position : position_field;
  signal row_d : std_logic_vector(row_bits - 1 downto 0);
  signal c0_d, c0 : std_logic_vector(c0_bits - 1 downto 0);
  signal c1_d, c1 : std_logic_vector(c1_bits - 1 downto 0);
  signal c2_d, c2 : std_logic_vector(c2_bits - 1 downto 0);
  signal c3_d, c3 : std_logic_vector(c3_bits - 1 downto 0);
  signal c4_d, c4 : std_logic_vector(c4_bits - 1 downto 0);
  signal c5_d, c5 : std_logic_vector(c5_bits - 1 downto 0);
  signal marks_d, pack_marks : std_logic_vector(mark_bits - 1 downto 0);

  -- fourth, third, second, first, level
  signal fourth : std_logic_vector(c4_bits - 1 downto 0);
  signal third : std_logic_vector(c3_bits - 1 downto 0);
  signal second : std_logic_vector(c2_bits - 1 downto 0);
  signal first : std_logic_vector(c1_bits - 1 downto 0);
  signal level : std_logic_vector(c0_bits - 1 downto 0);
  signal fourth_position, third_position, second_position, first_position : position_field;

  -- zeros
  signal distance_zeros, zeros_d, zeros, shift_zeros : std_logic_vector(zero_levels - 1 downto 0);
  signal zeros_distance : distance_field;

  -- coarse
  signal coarse_d, coarse : distance_field;
  signal fine_zeros : std_logic_vector(fine_levels - 1 downto 0);

  -- fine
  signal fine_d, early_normal : distance_field;

  -- multiply
  signal product : std_logic_vector(product_bits - 1 downto 0);
  signal ln_2 : std_logic_vector(ln_2_bits - 1 downto 0);
  signal triple_ln_2 : std_logic_vector(ln_2_bits + 1 downto 0);
  signal whole_product : std_logic_vector(ln_2_bits + whole_bits - 1 downto 0);

  -- add
  signal part, addend : unsigned(sum_bits - 1 downto 0);
  signal inverts : unsigned(0 downto 0);
  signal sum_d, sum : sum_field;

  -- pack
  signal packed_number : std_logic_vector(operand_bits - 1 downto 0);
begin
  assert device <= 2 report "dp_log: device is 0 to 2" severity failure;
  assert doublespeed <= 1 report "dp_log: doublespeed is 0 or 1" severity failure;
  assert synthesize <= 1 report "dp_log: synthesize is 0 or 1" severity failure;
  assert roundconvert <= 1 report "dp_log: roundconvert is 0 or 1" severity failure;

  -- look_up
  zero <= '1' when unsigned(exponentin) = 0 else '0';
  top <= '1' when unsigned(not exponentin) = 0 else '0';
  fractional <= '1' when unsigned(mantissain) /= 0 else '0';
  below <= mantissain(fraction_bits);
  below_bit(0) <= below;
  power <= unsigned('0' & exponentin) - bias + below_bit;
  minus_power <= to_unsigned(bias, whole_bits + 1) - unsigned(exponentin) - below_bit;
  whole_negative <= power(whole_bits);
  whole_zero_d <= "1" when power = 0 else "0";
  whole_d <= std_logic_vector(minus_power(whole_bits - 1 downto 0)) when whole_negative = '1' else
             std_logic_vector(power(whole_bits - 1 downto 0));
  same_d(0) <= whole_zero_d(0) or not (whole_negative xor below);
  distance_d <= std_logic_vector(to_unsigned(0, distance_bits) - unsigned(mantissain)) when below = '1' else
                mantissain(fraction_bits - 1 downto 1) & '0';
  index <= "10" & mantissain(51 downto 46) when below = '1' else '0' & mantissain(51 downto 45);
  position <= mantissain(45 downto 1) when below = '1' else mantissain(44 downto 1) & '0';
  nan <= (top and fractional) or (signin and not zero);
  infinite <= top or zero;
  zip <= whole_zero_d(0) and not fractional;
  negative <= zero or (not zip and not infinite and (whole_negative or (whole_zero_d(0) and below)));
  marks_d <= negative & nan & zip & infinite;
  coefficients : entity work.dp_log_table port map (index, row_d);
  c0_d <= row_d(row_bits - 1 downto row_bits - c0_bits);
  c1_d <= row_d(c1_bits + c2_bits + c3_bits + c4_bits + c5_bits - 1 downto c2_bits + c3_bits + c4_bits + c5_bits);
  c2_d <= row_d(c2_bits + c3_bits + c4_bits + c5_bits - 1 downto c3_bits + c4_bits + c5_bits);
  c3_d <= row_d(c3_bits + c4_bits + c5_bits - 1 downto c4_bits + c5_bits);
  c4_d <= row_d(c4_bits + c5_bits - 1 downto c5_bits);
  c5_d <= row_d(c5_bits - 1 downto 0);

  look_up_0 : entity work.xfc_registers generic map (c0_bits, first_cycle + 1) port map (sysclk, enable, c0_d, c0);
  look_up_1 : entity work.xfc_registers generic map (c1_bits, second_cycle + 1) port map (sysclk, enable, c1_d, c1);
  look_up_2 : entity work.xfc_registers generic map (c2_bits, third_cycle + 1) port map (sysclk, enable, c2_d, c2);
  look_up_3 : entity work.xfc_registers generic map (c3_bits, fourth_cycle + 1) port map (sysclk, enable, c3_d, c3);
  look_up_4 : entity work.xfc_register generic map (c4_bits, 1) port map (sysclk, enable, c4_d, c4);
  look_up_5 : entity work.xfc_register generic map (c5_bits, 1) port map (sysclk, enable, c5_d, c5);
  look_up_6 : entity work.xfc_registers generic map (distance_bits, level_cycle - normal_cycles)
    port map (sysclk, enable, distance_d, distance);
  look_up_7 : entity work.xfc_registers generic map (1, level_cycle - normal_cycles)
    port map (sysclk, enable, whole_zero_d, whole_zero);
  look_up_8 : entity work.xfc_registers generic map (whole_bits, product_cycle + 1 - whole_cycles)
    port map (sysclk, enable, whole_d, whole);
  look_up_9 : entity work.xfc_registers generic map (1, product_cycle + 1) port map (sysclk, enable, same_d, same);
  look_up_10 : entity work.xfc_registers generic map (mark_bits, product_cycle + 5)
    port map (sysclk, enable, marks_d, pack_marks);

  -- fourth
  fourth_step : entity work.xfc_polynomial_step generic map (c5_bits, c5_bits, c4_bits, fourth_borders, synthesize)
    port map (sysclk, enable, position(position_bits - 1 downto position_bits - c5_bits), c5, c4, fourth);

  fourth_0 : entity work.xfc_registers generic map (position_bits, fourth_cycle)
    port map (sysclk, enable, position, fourth_position);

  -- third
  third_step : entity work.xfc_polynomial_step generic map (c4_bits, c4_bits, c3_bits, third_borders, synthesize)
    port map (sysclk, enable, fourth_position(position_bits - 1 downto position_bits - c4_bits), fourth, c3, third);

  third_0 : entity work.xfc_registers generic map (position_bits, third_cycles + 1)
    port map (sysclk, enable, fourth_position, third_position);

  -- second
  second_step : entity work.xfc_polynomial_step generic map (c3_bits, c3_bits, c2_bits, second_borders, synthesize)
    port map (sysclk, enable, third_position(position_bits - 1 downto position_bits - c3_bits), third, c2, second);

  second_0 : entity work.xfc_registers generic map (position_bits, second_cycles + 1)
    port map (sysclk, enable, third_position, second_position);

  -- first
  first_step : entity work.xfc_polynomial_step generic map (position_bits, c2_bits, c1_bits, first_borders, synthesize)
    port map (sysclk, enable, second_position, second, c1, first);

  first_0 : entity work.xfc_registers generic map (position_bits, first_cycles + 1)
    port map (sysclk, enable, second_position, first_position);

  -- level
  level_step : entity work.xfc_polynomial_step generic map (position_bits, c1_bits, c0_bits, level_borders, synthesize)
    port map (sysclk, enable, first_position, first, c0, level);

  -- zeros: only where nothing is added to the product
  count_distance : entity work.xfc_leading_zeros generic map (distance_bits, zero_levels)
    port map (distance, distance_zeros);
  zeros_d <= distance_zeros when whole_zero = "1" else (others => '0');

  zeros_0 : entity work.xfc_register generic map (zero_levels, 1) port map (sysclk, enable, zeros_d, zeros);
  zeros_1 : entity work.xfc_register generic map (distance_bits, 1)
    port map (sysclk, enable, distance, zeros_distance);
  zeros_2 : entity work.xfc_registers generic map (zero_levels, multiply_cycles + 5)
    port map (sysclk, enable, zeros, shift_zeros);

  -- coarse
  shift_coarse : entity work.xfc_shift_left generic map (distance_bits, coarse_levels, 2 ** fine_levels)
    port map (zeros_distance, zeros(zero_levels - 1 downto fine_levels), '0', coarse_d);

  coarse_0 : entity work.xfc_register generic map (distance_bits, 1) port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (fine_levels, 1)
    port map (sysclk, enable, zeros(fine_levels - 1 downto 0), fine_zeros);

  -- fine
  shift_fine : entity work.xfc_shift_left generic map (distance_bits, fine_levels, 1)
    port map (coarse, fine_zeros, '0', fine_d);

  fine_0 : entity work.xfc_register generic map (distance_bits, 1) port map (sysclk, enable, fine_d, early_normal);

  -- multiply
  multiply_product : entity work.xfc_early_product
    generic map (distance_bits, c0_bits, multiply_borders, synthesize)
    port map (sysclk, enable, early_normal, level, product);
  ln_2(72 downto 64) <= '1' & x"62";
  ln_2(63 downto 32) <= x"E42FEFA3";
  ln_2(31 downto 0) <= x"9EF35794";
  triple_ln_2(74 downto 64) <= "100" & x"28";
  triple_ln_2(63 downto 32) <= x"AC8FCEEA";
  triple_ln_2(31 downto 0) <= x"DCDA06BC";
  multiply_whole : entity work.xfc_unsigned_product generic map (ln_2_bits, whole_bits, whole_borders, synthesize)
    port map (sysclk, enable, ln_2, triple_ln_2, whole, whole_product);

  -- add
  part <= resize(unsigned(product(product_bits - 1 downto product_bits - point_bits)), sum_bits);
  inverts(0) <= not same(0);
  addend <= part when same = "1" else not part;
  sum_d <= std_logic_vector(
    unsigned(whole_product(ln_2_bits - point_bits + sum_bits - 1 downto ln_2_bits - point_bits)) + addend + inverts);

  add_0 : entity work.xfc_register generic map (sum_bits, 1) port map (sysclk, enable, sum_d, sum);

  -- count, shift, round, pack
  pack : entity work.xfc_sum_to_ieee
    generic map (exponent_bits, fraction_bits, sum_bits, window_bits, window_levels, zero_levels, first_exponent)
    port map (sysclk, enable, sum, shift_zeros, pack_marks, packed_number);
  signout <= packed_number(operand_bits - 1);
  exponentout <= packed_number(operand_bits - 2 downto fraction_bits);
  mantissaout <= packed_number(fraction_bits - 1 downto 0);
end rtl;
