-- The natural logarithm of an IEEE single, within 0.61 ulp. Subnormal operands are zero; zero gives -infinity, a
-- negative operand nan, 1 gives +0.
--   step unpack:    x = m * 2 ** whole with m from 0.75 to 1.5; |m - 1|; segment of m and position in it
--   step look_up:   coefficients of the segment, where ln(m) / (m - 1) is level - slope * u + curve * u ** 2
--   step bend:      slope less curve times the high bits of the position
--   step fall:      level less that times the position
--   step zeros:     leading zeros of |m - 1| where the whole power is 0, else none
--   step coarse:    shift |m - 1| left by them, by whole bytes
--   step fine:      by single bits
--   step multiply:  that value times |m - 1|; beside it the whole power times ln(2)
--   step add:       both
--   step count:     leading zeros
--   step shift:     shift left by them
--   step round:     to nearest, into the exponent
--   step pack:      marks
-- Latency 21 cycles; zeros, coarse and fine end a cycle before fall does. README.md has the bound of the error.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity fp_log is
  port (sysclk, reset, enable : in std_logic;
        signin      : in std_logic;
        exponentin  : in std_logic_vector(8 downto 1);
        mantissain  : in std_logic_vector(23 downto 1);
        signout     : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_log;

architecture rtl of fp_log is
  constant exponent_bits : positive := 8;
  constant fraction_bits : positive := 23;
  constant bias          : positive := 127;
  constant whole_bits    : positive := 8;
  constant ln_2_bits     : positive := 32;          -- behind the point
  constant ln_2          : std_logic_vector(ln_2_bits - 1 downto 0) := X"B17217F8";
  constant distance_bits : positive := 23;          -- of |m - 1|, whose units are 2 ** -24
  constant index_bits    : positive := 8;
  constant position_bits : positive := 16;
  constant short_bits    : positive := 12;          -- of the position, for the curve
  constant level_bits    : positive := 29;          -- one before the point
  constant slope_bits    : positive := 20;
  constant curve_bits    : positive := 12;
  constant product_bits  : positive := distance_bits + level_bits;
  constant part_bits     : positive := 32;          -- of the product, behind the point
  constant sum_bits      : positive := 39;          -- 7 before the point
  constant window_bits   : positive := 10;          -- of the sum, that the leading one is in
  constant window_levels : positive := 4;
  constant zero_levels   : positive := 5;
  constant fine_levels   : positive := 3;           -- distances below 8
  constant coarse_levels : positive := zero_levels - fine_levels;
  constant first_exponent : positive := 133;        -- of the sum's highest bit
  constant mark_bits     : positive := 4;           -- negative, nan, zip, infinite
  constant bend_borders     : natural := 14;        -- behind each of three levels
  constant bend_cycles      : natural := 3;
  constant fall_borders     : natural := 30;        -- behind each of four levels
  constant fall_cycles      : natural := 4;
  constant multiply_borders : natural := 31;        -- behind the multiples too
  constant multiply_cycles  : natural := 5;
  constant whole_borders    : natural := 6;
  constant whole_cycles     : natural := 2;
  constant normal_cycles    : natural := 3;         -- zeros, coarse and fine
  constant level_cycles     : natural := bend_cycles + fall_cycles + 3;         -- in front of fall's last one
  constant sum_cycles       : natural := level_cycles + 1 + multiply_cycles;    -- in front of add

  constant operand_bits : positive := 1 + exponent_bits + fraction_bits;
  constant row_bits     : positive := level_bits + slope_bits + curve_bits;
  subtype distance_field is std_logic_vector(distance_bits - 1 downto 0);
  subtype position_field is std_logic_vector(position_bits - 1 downto 0);
  subtype zero_field is std_logic_vector(zero_levels - 1 downto 0);
  subtype mark_field is std_logic_vector(mark_bits - 1 downto 0);
  subtype sum_field is std_logic_vector(sum_bits - 1 downto 0);

  -- unpack
  signal zero, top, fractional, below, whole_negative : std_logic;
  signal nan_d, infinite_d, zip_d, negative_d : std_logic;
  signal below_bit : unsigned(0 downto 0);
  signal power, minus_power : unsigned(whole_bits downto 0);   -- two's complement
  signal whole_zero_d, whole_zero, same_d, same : std_logic_vector(0 downto 0);
  signal whole_d, whole : std_logic_vector(whole_bits - 1 downto 0);
  signal distance_d, distance : distance_field;
  signal index_d, index : std_logic_vector(index_bits - 1 downto 0);
  signal position_d, position : position_field;
  signal marks_d, pack_marks : mark_field;

  -- look_up
  signal row_d, row : std_logic_vector(row_bits - 1 downto 0);

  -- bend, fall
  signal level : std_logic_vector(level_bits - 1 downto 0);

  -- zeros
  signal distance_zeros, zeros_d, zeros, shift_zeros : zero_field;
  signal zeros_distance : distance_field;

  -- coarse, fine
  signal coarse_d, coarse, fine_d, fine : distance_field;
  signal fine_zeros : std_logic_vector(fine_levels - 1 downto 0);

  -- multiply
  signal product : std_logic_vector(product_bits - 1 downto 0);
  signal whole_product : std_logic_vector(ln_2_bits + whole_bits - 1 downto 0);
  signal triple_ln_2 : std_logic_vector(ln_2_bits + 1 downto 0);

  -- add
  signal part, addend, sum_d, sum : sum_field;
  signal carry : unsigned(0 downto 0);

  -- pack
  signal packed_number : std_logic_vector(operand_bits - 1 downto 0);
begin
  -- unpack
  zero <= '1' when unsigned(exponentin) = 0 else '0';
  top <= '1' when unsigned(exponentin) = 255 else '0';
  fractional <= '1' when unsigned(mantissain) /= 0 else '0';
  below <= mantissain(fraction_bits);
  below_bit(0) <= below;
  power <= unsigned('0' & exponentin) - to_unsigned(bias, whole_bits + 1) + below_bit;
  minus_power <= to_unsigned(bias, whole_bits + 1) - unsigned('0' & exponentin) - below_bit;
  whole_negative <= power(whole_bits);
  whole_zero_d(0) <= '1' when power = 0 else '0';
  whole_d <= std_logic_vector(minus_power(whole_bits - 1 downto 0)) when whole_negative = '1' else
             std_logic_vector(power(whole_bits - 1 downto 0));
  same_d(0) <= whole_zero_d(0) or not (whole_negative xor below);
  distance_d <= std_logic_vector(to_unsigned(0, distance_bits) - unsigned(mantissain)) when below = '1' else
                mantissain(fraction_bits - 1 downto 1) & '0';
  index_d <= "10" & mantissain(22 downto 17) when below = '1' else '0' & mantissain(22 downto 16);
  position_d <= mantissain(16 downto 1) when below = '1' else mantissain(15 downto 1) & '0';
  nan_d <= (top and fractional) or (signin and not zero);
  infinite_d <= top or zero;
  zip_d <= whole_zero_d(0) and not fractional;
  negative_d <= zero or (not zip_d and not infinite_d and (whole_negative or (whole_zero_d(0) and below)));
  marks_d <= negative_d & nan_d & zip_d & infinite_d;

  unpack_0 : entity work.xfc_registers generic map (distance_bits, level_cycles - normal_cycles)
    port map (sysclk, enable, distance_d, distance);
  unpack_1 : entity work.xfc_register generic map (index_bits, 1) port map (sysclk, enable, index_d, index);
  unpack_2 : entity work.xfc_register generic map (position_bits, 1)
    port map (sysclk, enable, position_d, position);
  unpack_3 : entity work.xfc_registers generic map (1, level_cycles - normal_cycles)
    port map (sysclk, enable, whole_zero_d, whole_zero);
  unpack_4 : entity work.xfc_registers generic map (whole_bits, sum_cycles - whole_cycles)
    port map (sysclk, enable, whole_d, whole);
  unpack_5 : entity work.xfc_registers generic map (1, sum_cycles) port map (sysclk, enable, same_d, same);
  unpack_6 : entity work.xfc_registers generic map (mark_bits, sum_cycles + 4)
    port map (sysclk, enable, marks_d, pack_marks);

  -- look_up
  coefficients : entity work.fp_log_table port map (index, row_d);

  look_up_0 : entity work.xfc_register generic map (row_bits, 1) port map (sysclk, enable, row_d, row);

  -- bend, fall
  fall : entity work.xfc_quadratic
    generic map (position_bits, short_bits, level_bits, slope_bits, curve_bits, bend_borders, fall_borders, 0)
    port map (sysclk, enable, position, row, level);

  -- zeros: only where nothing is added to the product
  count_distance : entity work.xfc_leading_zeros generic map (distance_bits, zero_levels)
    port map (distance, distance_zeros);
  zeros_d <= distance_zeros when whole_zero(0) = '1' else (others => '0');

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

  fine_0 : entity work.xfc_register generic map (distance_bits, 1) port map (sysclk, enable, fine_d, fine);

  -- multiply
  multiply_product : entity work.xfc_early_product generic map (distance_bits, level_bits, multiply_borders, 0)
    port map (sysclk, enable, fine, level, product);
  triple_ln_2(ln_2_bits + 1 downto ln_2_bits) <= "10";
  triple_ln_2(ln_2_bits - 1 downto 0) <= X"145647E8";
  multiply_whole : entity work.xfc_unsigned_product generic map (ln_2_bits, whole_bits, whole_borders, 0)
    port map (sysclk, enable, ln_2, triple_ln_2, whole, whole_product);

  -- add
  part(sum_bits - 1 downto part_bits) <= (others => '0');
  part(part_bits - 1 downto 0) <= product(product_bits - 1 downto product_bits - part_bits);
  addend <= part when same(0) = '1' else not part;
  carry(0) <= not same(0);
  sum_d <= std_logic_vector(unsigned(whole_product(sum_bits - 1 downto 0)) + unsigned(addend) + carry);

  add_0 : entity work.xfc_register generic map (sum_bits, 1) port map (sysclk, enable, sum_d, sum);

  -- count, shift, round, pack
  pack : entity work.xfc_sum_to_ieee
    generic map (exponent_bits, fraction_bits, sum_bits, window_bits, window_levels, zero_levels, first_exponent)
    port map (sysclk, enable, sum, shift_zeros, pack_marks, packed_number);
  signout <= packed_number(operand_bits - 1);
  exponentout <= packed_number(operand_bits - 2 downto fraction_bits);
  mantissaout <= packed_number(fraction_bits - 1 downto 0);
end rtl;
