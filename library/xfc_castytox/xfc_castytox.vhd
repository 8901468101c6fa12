-- Converts a YDouble value in adder form to XFloat in adder form: nearest, to even between two, in the place that the
-- exponent gives the lowest bit, for there is no normalization. What has used guard bits just below the range of
-- exponents is shifted into it; below that it is zero, from exponent 960 on infinite, but a mantissa of zero is zero.
-- Rounds whatever roundconvert is.
--   cycle 1  align:  the exponent with the single's bias; shift into the range; beside it, whether to round up
--   cycle 2  round:  one carry chain; halve when the guard bits are used up; flags
-- Latency 2 cycles.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castytox is
  generic (roundconvert : natural; mantissa : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_castytox;

architecture rtl of xfc_castytox is
  constant exponent_bits   : positive := 10;
  constant double_exponent : positive := 13;
  constant double_mantissa : positive := 64;
  constant dropped_bits    : positive := double_mantissa - mantissa;
  constant guard_bits      : positive := 4;
  constant bias_difference : positive := 896;
  constant infinite        : positive := bias_difference + 960;   -- operands' exponents from here on

  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);                           -- sign, nan, zip, sat

  -- align
  signal exponent_in : std_logic_vector(double_exponent - 1 downto 0);
  signal exponent_d, exponent : exponent_field;
  signal mantissa_in, aligned : std_logic_vector(double_mantissa - 1 downto 0);
  signal far_below, just_below, zip, lost : std_logic;
  signal distance : std_logic_vector(2 downto 0);
  signal ups : std_logic_vector(guard_bits downto 0);
  signal kept : std_logic_vector(mantissa - 1 downto 0);
  signal up_d, up : std_logic_vector(0 downto 0);
  signal marks_d, marks : mark_field;
  signal limits_d, limits : std_logic_vector(2 downto 0);   -- positive and all ones, exponent 959, from 960 on

  -- round
  signal sum, result_d : std_logic_vector(mantissa - 1 downto 0);
  signal halve : std_logic_vector(0 downto 0);
  signal following : exponent_field;
  signal too_large : std_logic;
  signal value_d : std_logic_vector(mantissa + exponent_bits - 1 downto 0);
  signal sign : std_logic;
  signal flags_d, flags : std_logic_vector(2 downto 0);
begin
  assert roundconvert <= 1 report "xfc_castytox: roundconvert is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "xfc_castytox: mantissa is 32 or 36" severity failure;

  -- align: exponents from 893 to 896 become 1
  exponent_in <= aa(double_exponent downto 1);
  mantissa_in <= aa(double_mantissa + double_exponent downto double_exponent + 1);
  far_below <= '1' when unsigned(exponent_in) <= bias_difference - guard_bits else '0';
  just_below <= '1' when far_below = '0' and unsigned(exponent_in) <= bias_difference else '0';
  distance <= std_logic_vector(to_unsigned(1, 3) - unsigned(exponent_in(2 downto 0))) when just_below = '1' else "000";
  exponent_d <= std_logic_vector(to_unsigned(1, exponent_bits)) when just_below = '1' else
                std_logic_vector(unsigned(exponent_in(exponent_bits - 1 downto 0)) - bias_difference);
  zip <= '1' when aazip = '1' or far_below = '1' or unsigned(mantissa_in) = 0 else '0';
  shift_align : entity work.xfc_shift_right generic map (double_mantissa, 3, 1)
    port map (mantissa_in, distance, '0', aligned, lost);
  -- Every distance's rounding is decided while the distance is found.
  shifted_by : for places in 0 to guard_bits generate
    round_even : entity work.xfc_round_even generic map (dropped_bits + places)
      port map (mantissa_in(dropped_bits + places), mantissa_in(dropped_bits + places - 1 downto 0), '0', ups(places));
  end generate;
  up_d(0) <= ups(4) when distance(2) = '1' else
             ups(3) when distance = "011" else ups(2) when distance = "010" else
             ups(1) when distance = "001" else ups(0);
  marks_d <= mantissa_in(double_mantissa - 1) & aanan & zip & aasat;
  -- What has been shifted has a sign more on top, so that rounding up does not use up its guard bits.
  limits_d(2) <= not just_below and not mantissa_in(double_mantissa - 1)
                 when unsigned(not mantissa_in(double_mantissa - 2 downto dropped_bits)) = 0 else '0';
  limits_d(1) <= '1' when unsigned(exponent_in) = infinite - 1 else '0';
  limits_d(0) <= '1' when unsigned(exponent_in) >= infinite else '0';

  align_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, exponent_d, exponent);
  align_1 : entity work.xfc_register generic map (mantissa, 1)
    port map (sysclk, enable, aligned(double_mantissa - 1 downto dropped_bits), kept);
  align_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);
  align_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);
  align_4 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, limits_d, limits);

  -- round: exponents from 960 on are infinite; with a flag the sign is the operand's
  sum <= std_logic_vector(unsigned(kept) + unsigned(up));
  halve(0) <= limits(2) and up(0);
  following <= std_logic_vector(unsigned(exponent) + unsigned(halve));
  too_large <= limits(0) or (limits(1) and halve(0));
  flags_d <= marks(2) & (not marks(2) and not marks(0) and marks(1)) &
             (not marks(2) and (marks(0) or (too_large and not marks(1))));
  sign <= marks(3) when flags_d /= "000" else sum(mantissa - 1) and not halve(0);
  result_d <= sign & (sum(mantissa - 2) or halve(0)) & sum(mantissa - 3 downto 0);
  value_d <= result_d & following;

  round_0 : entity work.xfc_register generic map (mantissa + exponent_bits, 1)
    port map (sysclk, enable, value_d, cc);
  round_1 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, flags_d, flags);

  ccsat <= flags(0);
  cczip <= flags(1);
  ccnan <= flags(2);
end rtl;
