-- Converts an XFloat value in adder form to an IEEE single: nearest, to even between two. What is below the smallest
-- normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Exponent field 0 is zero.
--   step complement:  ones' complement of a negative mantissa, one low unit short of its magnitude
--   step count:       leading zeros
--   step coarse:      shift left by whole bytes; the exponent of the leading one
--   step fine:        shift left by single bits
--   step decide:      whether to round up; a mantissa of nothing but zeros is zero
--   step round:       one carry chain for rounding, for the missing unit and into the exponent
--   step pack:        range and flags
-- Latency 3 + 2 * normspeed cycles: without the registers behind complement and decide when normspeed is 1.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_round_xfloat is
  generic (mantissa : positive; normspeed : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(32 downto 1));
end xfc_round_xfloat;

architecture rtl of xfc_round_xfloat is
  constant exponent_bits : positive := 10;
  constant guard_bits    : positive := 4;
  constant fraction_bits : positive := 23;
  constant ieee_exponent : positive := 8;
  constant magnitude_bits : positive := mantissa - 1;
  constant dropped_bits  : positive := magnitude_bits - fraction_bits - 1;
  constant fine_levels   : positive := 3;                       -- distances below 8
  constant levels        : positive := 5 + mantissa / 36;       -- enough to count and shift magnitude_bits
  constant coarse_levels : positive := levels - fine_levels;
  constant wide_bits     : positive := exponent_bits + 2;       -- exponent below zero and above the field
  constant optional_border : natural := normspeed - 1;

  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);            -- two's complement
  subtype magnitude_field is std_logic_vector(magnitude_bits - 1 downto 0);
  subtype count_field is std_logic_vector(levels - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);                           -- sign, nan, zip, sat

  -- complement
  signal mantissa_in : std_logic_vector(mantissa - 1 downto 0);
  signal sign, zero : std_logic;
  signal magnitude_d, magnitude : magnitude_field;
  signal exponent_d, exponent : exponent_field;
  signal marks_d, marks : mark_field;

  -- count
  signal zeros_d, zeros : count_field;
  signal count_magnitude : magnitude_field;
  signal count_exponent : exponent_field;
  signal count_marks : mark_field;

  -- coarse
  signal coarse_d, coarse : magnitude_field;
  signal leading_d, leading : wide_exponent;
  signal fine_zeros : std_logic_vector(fine_levels - 1 downto 0);
  signal coarse_marks : mark_field;

  -- fine
  signal normal_d, normal : magnitude_field;
  signal fine_exponent : wide_exponent;
  signal fine_marks : mark_field;

  -- decide
  signal up_d, up : std_logic_vector(0 downto 0);
  signal kept : std_logic_vector(fraction_bits - 1 downto 0);
  signal decide_marks_d, decide_marks : mark_field;
  signal decide_exponent : wide_exponent;

  -- round
  signal rounded_d, rounded : std_logic_vector(wide_bits + fraction_bits - 1 downto 0);
  signal round_marks : mark_field;

  -- pack
  signal rounded_exponent : wide_exponent;
  signal too_small, too_large, infinite, flushed : std_logic;
  signal packed_d : std_logic_vector(31 downto 0);
begin
  assert mantissa = 32 or mantissa = 36 report "xfc_round_xfloat: mantissa is 32 or 36" severity failure;
  assert normspeed <= 2 report "xfc_round_xfloat: normspeed is 1 or 2" severity failure;

  -- complement
  mantissa_in <= aa(mantissa + exponent_bits downto exponent_bits + 1);
  sign <= mantissa_in(mantissa - 1);
  magnitude_d <= not mantissa_in(magnitude_bits - 1 downto 0) when sign = '1' else
                 mantissa_in(magnitude_bits - 1 downto 0);
  exponent_d <= aa(exponent_bits downto 1);
  zero <= '1' when aazip = '1' or unsigned(exponent_d) = 0 else '0';
  marks_d <= sign & aanan & zero & aasat;

  complement_0 : entity work.xfc_register generic map (magnitude_bits, optional_border)
    port map (sysclk, enable, magnitude_d, magnitude);
  complement_1 : entity work.xfc_register generic map (exponent_bits, optional_border)
    port map (sysclk, enable, exponent_d, exponent);
  complement_2 : entity work.xfc_register generic map (4, optional_border) port map (sysclk, enable, marks_d, marks);

  -- count
  count_zeros : entity work.xfc_leading_zeros generic map (magnitude_bits, levels) port map (magnitude, zeros_d);

  count_0 : entity work.xfc_register generic map (levels, 1) port map (sysclk, enable, zeros_d, zeros);
  count_1 : entity work.xfc_register generic map (magnitude_bits, 1)
    port map (sysclk, enable, magnitude, count_magnitude);
  count_2 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, exponent, count_exponent);
  count_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks, count_marks);

  -- coarse: a negative mantissa is followed by ones, for the missing unit belongs to its lowest bit
  shift_coarse : entity work.xfc_shift_left generic map (magnitude_bits, coarse_levels, 2 ** fine_levels)
    port map (count_magnitude, zeros(levels - 1 downto fine_levels), count_marks(3), coarse_d);
  leading_d <= std_logic_vector(resize(unsigned(count_exponent), wide_bits) + guard_bits - unsigned(zeros));

  coarse_0 : entity work.xfc_register generic map (magnitude_bits, 1) port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (wide_bits, 1) port map (sysclk, enable, leading_d, leading);
  coarse_2 : entity work.xfc_register generic map (fine_levels, 1)
    port map (sysclk, enable, zeros(fine_levels - 1 downto 0), fine_zeros);
  coarse_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, count_marks, coarse_marks);

  -- fine
  shift_fine : entity work.xfc_shift_left generic map (magnitude_bits, fine_levels, 1)
    port map (coarse, fine_zeros, coarse_marks(3), normal_d);

  fine_0 : entity work.xfc_register generic map (magnitude_bits, 1) port map (sysclk, enable, normal_d, normal);
  fine_1 : entity work.xfc_register generic map (wide_bits, 1) port map (sysclk, enable, leading, fine_exponent);
  fine_2 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, coarse_marks, fine_marks);

  -- decide
  round_even : entity work.xfc_round_even generic map (dropped_bits)
    port map (normal(dropped_bits), normal(dropped_bits - 1 downto 0), fine_marks(3), up_d(0));
  decide_marks_d <= fine_marks(3 downto 2) & (fine_marks(1) or not normal(magnitude_bits - 1)) & fine_marks(0);

  decide_0 : entity work.xfc_register generic map (1, optional_border) port map (sysclk, enable, up_d, up);
  decide_1 : entity work.xfc_register generic map (fraction_bits, optional_border)
    port map (sysclk, enable, normal(magnitude_bits - 2 downto dropped_bits), kept);
  decide_2 : entity work.xfc_register generic map (wide_bits, optional_border)
    port map (sysclk, enable, fine_exponent, decide_exponent);
  decide_3 : entity work.xfc_register generic map (4, optional_border)
    port map (sysclk, enable, decide_marks_d, decide_marks);

  -- round
  rounded_d <= std_logic_vector(unsigned(decide_exponent) & unsigned(kept) + unsigned(up));

  round_0 : entity work.xfc_register generic map (wide_bits + fraction_bits, 1)
    port map (sysclk, enable, rounded_d, rounded);
  round_1 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, decide_marks, round_marks);

  -- pack
  rounded_exponent <= rounded(wide_bits + fraction_bits - 1 downto fraction_bits);
  too_small <= '1' when signed(rounded_exponent) <= 0 else '0';
  too_large <= '1' when signed(rounded_exponent) >= 255 else '0';
  flushed <= not round_marks(0) and (round_marks(1) or too_small);
  infinite <= round_marks(0) or too_large;
  packed_d(31) <= round_marks(3) and not round_marks(2);
  packed_d(30 downto fraction_bits) <= (others => '1') when round_marks(2) = '1' else
                                       (others => '0') when flushed = '1' else
                                       (others => '1') when infinite = '1' else
                                       rounded_exponent(ieee_exponent - 1 downto 0);
  packed_d(fraction_bits - 1) <= '1' when round_marks(2) = '1' else
                                 rounded(fraction_bits - 1) and not flushed and not infinite;
  packed_d(fraction_bits - 2 downto 0) <= (others => '0') when (round_marks(2) or flushed or infinite) = '1' else
                                          rounded(fraction_bits - 2 downto 0);

  pack_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, packed_d, cc);
end rtl;
