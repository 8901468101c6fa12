-- Rounds an IEEE number to an integer: down, up, toward zero, to nearest with halves away from zero for rounding 0 to
-- 3. Exact; the sign stays, of a zero too. Subnormal numbers are zeros, infinities stay, nan is the quiet one.
--   step place:  the bits of the fraction that are worth less than 1
--   step cut:    without them; whether one unit comes to the magnitude. Below 1 the number becomes 1/2
--   step lower:  the unit and the lower half of the sum
--   step upper:  the upper half, which carries into the exponent; zeros and nan
-- 3 cycles with a register behind place, cut and upper, 4 with lower_border.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_round_ieee is
  generic (exponent_bits : positive;
           fraction_bits : positive;
           rounding      : natural;
           lower_border  : natural);   -- 1: a register behind lower
  port (sysclk, enable : in std_logic;
        number  : in std_logic_vector(exponent_bits + fraction_bits downto 0);
        rounded : out std_logic_vector(exponent_bits + fraction_bits downto 0));
end xfc_round_ieee;

architecture rtl of xfc_round_ieee is
  constant width       : positive := exponent_bits + fraction_bits;   -- of the magnitude
  constant lower_bits  : positive := (width + 1) / 2;
  constant upper_bits  : positive := width - lower_bits;
  constant bias        : positive := 2 ** (exponent_bits - 1) - 1;
  constant first_whole : positive := bias + fraction_bits;

  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype magnitude_field is std_logic_vector(width - 1 downto 0);
  constant no_fraction : fraction_field := (others => '0');
  constant halves : std_logic_vector(exponent_bits - 1 downto 0) :=
    std_logic_vector(to_unsigned(bias - 1, exponent_bits));

  -- place
  signal exponent : unsigned(exponent_bits - 1 downto 0);
  signal is_nan, below_one, not_zero, from_half : std_logic;
  signal mask_d, mask : fraction_field;
  signal placed : std_logic_vector(width downto 0);
  signal marks_d, marks : std_logic_vector(3 downto 0);               -- nan, below one, not zero, from 1/2 to 1

  -- cut
  signal sign, any, half : std_logic;
  signal fraction, mask_behind, cut_bits, highest_cut : fraction_field;
  signal kept_d, kept : magnitude_field;
  signal unit_d, unit_bit : std_logic_vector(fraction_bits downto 0);
  signal up_d, up : std_logic_vector(0 downto 0);
  signal cut_marks_d, cut_marks : std_logic_vector(2 downto 0);       -- sign, nan, below one

  -- lower
  signal addend : magnitude_field;
  signal lower_d, lower : std_logic_vector(lower_bits downto 0);
  signal upper_kept, upper_addend : std_logic_vector(upper_bits - 1 downto 0);
  signal lower_marks_d, lower_marks : std_logic_vector(2 downto 0);   -- sign, nan, zero

  -- upper
  signal upper : std_logic_vector(upper_bits - 1 downto 0);
  signal sum : magnitude_field;
  signal rounded_d : std_logic_vector(width downto 0);
begin
  -- place
  exponent <= unsigned(number(width - 1 downto fraction_bits));
  below_one <= '1' when exponent < bias else '0';
  places : for i in 0 to fraction_bits - 1 generate
    mask_d(i) <= '1' when exponent < first_whole - i else '0';
  end generate;
  is_nan <= '1' when exponent = 2 ** exponent_bits - 1 and number(fraction_bits - 1 downto 0) /= no_fraction else '0';
  not_zero <= '1' when exponent /= 0 else '0';
  from_half <= '1' when exponent = bias - 1 else '0';
  marks_d <= is_nan & below_one & not_zero & from_half;

  place_0 : entity work.xfc_register generic map (width + 1, 1) port map (sysclk, enable, number, placed);
  place_1 : entity work.xfc_register generic map (fraction_bits, 1) port map (sysclk, enable, mask_d, mask);
  place_2 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);

  -- cut
  sign <= placed(width);
  fraction <= placed(fraction_bits - 1 downto 0);
  cut_bits <= fraction and mask;
  mask_behind <= '0' & mask(fraction_bits - 1 downto 1);
  highest_cut <= fraction and mask and not mask_behind;
  any <= marks(1) when marks(2) = '1' else '1' when cut_bits /= no_fraction else '0';
  half <= marks(0) when marks(2) = '1' else '1' when highest_cut /= no_fraction else '0';
  up_d(0) <= sign and any when rounding = 0 else not sign and any when rounding = 1 else
             '0' when rounding = 2 else half;
  kept_d(width - 1 downto fraction_bits) <= halves when marks(2) = '1' else placed(width - 1 downto fraction_bits);
  kept_d(fraction_bits - 1 downto 0) <= fraction and not mask;
  unit_d <= (mask & '1') and not ('0' & mask);
  cut_marks_d <= sign & marks(3 downto 2);

  cut_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, kept_d, kept);
  cut_1 : entity work.xfc_register generic map (fraction_bits + 1, 1) port map (sysclk, enable, unit_d, unit_bit);
  cut_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);
  cut_3 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, cut_marks_d, cut_marks);

  -- lower
  addend(width - 1 downto fraction_bits + 1) <= (others => '0');
  addend(fraction_bits downto 0) <= unit_bit when up(0) = '1' else (others => '0');
  lower_d <= std_logic_vector(unsigned('0' & kept(lower_bits - 1 downto 0)) +
                              unsigned(addend(lower_bits - 1 downto 0)));
  lower_marks_d <= cut_marks(2 downto 1) & (cut_marks(0) and not up(0));

  lower_0 : entity work.xfc_register generic map (lower_bits + 1, lower_border)
    port map (sysclk, enable, lower_d, lower);
  lower_1 : entity work.xfc_register generic map (upper_bits, lower_border)
    port map (sysclk, enable, kept(width - 1 downto lower_bits), upper_kept);
  lower_2 : entity work.xfc_register generic map (upper_bits, lower_border)
    port map (sysclk, enable, addend(width - 1 downto lower_bits), upper_addend);
  lower_3 : entity work.xfc_register generic map (3, lower_border)
    port map (sysclk, enable, lower_marks_d, lower_marks);

  -- upper
  upper <= std_logic_vector(unsigned(upper_kept) + unsigned(upper_addend) +
                            unsigned(lower(lower_bits downto lower_bits)));
  sum <= upper & lower(lower_bits - 1 downto 0);
  rounded_d(width) <= lower_marks(2) and not lower_marks(1);
  rounded_d(width - 1 downto fraction_bits) <= (others => '1') when lower_marks(1) = '1' else
                                               (others => '0') when lower_marks(0) = '1' else
                                               sum(width - 1 downto fraction_bits);
  rounded_d(fraction_bits - 1) <=
    lower_marks(1) or (sum(fraction_bits - 1) and not lower_marks(0));
  rounded_d(fraction_bits - 2 downto 0) <= (others => '0') when lower_marks(1 downto 0) /= "00" else
                                           sum(fraction_bits - 2 downto 0);

  upper_0 : entity work.xfc_register generic map (width + 1, 1) port map (sysclk, enable, rounded_d, rounded);
end rtl;
