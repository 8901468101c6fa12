-- Normalizes an XFloat value in adder form: its magnitude becomes 1 or more and below 2. Exact for a multiplier (target
-- 0) and a divider (1, sign and magnitude), whatever inputnormalize says; in adder form (2) the four bits that the
-- guard bits need are rounded to nearest even with roundnormalize, else or'ed into the lowest that is left. What has
-- an exponent below 1 then is zero, as is a mantissa of zero; exponent field 0 is zero.
--   step magnitude:  a divider's magnitude
--   step count:      leading zeros, of the ones' complement of a negative number
--   step coarse:     shift left by whole bytes; the exponent of the leading one
--   step fine:       shift left by single bits
--   step round:      -2 becomes -1 with the next exponent; adder form: rounding
--   step settle:     range and flags
-- Latency 2 + normspeed cycles (a register behind count, coarse and settle, and behind fine when normspeed is 2), one
-- more for a divider (behind magnitude) and for roundnormalize in adder form (behind round); 1 for a multiplier without
-- inputnormalize (behind settle alone).
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_normfp1x is
  generic (mantissa : positive; inputnormalize : natural; roundnormalize : natural; normspeed : positive;
           target : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_normfp1x;

architecture rtl of xfc_normfp1x is
  function number_of(condition : boolean) return natural is
  begin
    if condition then return 1; else return 0; end if;
  end number_of;

  constant exponent_bits  : positive := 10;
  constant guard_bits     : positive := 4;
  constant magnitude_bits : positive := mantissa - 1;
  constant fine_levels    : positive := 3;                       -- distances below 8
  constant levels         : positive := 5 + mantissa / 36;       -- enough to count and shift magnitude_bits
  constant coarse_levels  : positive := levels - fine_levels;
  constant wide_bits      : positive := exponent_bits + 2;       -- exponent below zero and above the field
  constant divider        : natural := number_of(target = 1);
  constant adder          : natural := number_of(target = 2);
  constant pipelined      : natural := number_of(target /= 0 or inputnormalize = 1);
  constant fine_border    : natural := pipelined * (normspeed - 1);
  constant round_border   : natural := adder * roundnormalize;

  subtype mantissa_field is std_logic_vector(mantissa - 1 downto 0);
  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);            -- two's complement
  subtype magnitude_field is std_logic_vector(magnitude_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(4 downto 0);             -- one exponent higher, sign, nan, zip, sat

  -- magnitude
  signal mantissa_in, before_increment, converted : mantissa_field;
  signal sign, zero, largest : std_logic;
  signal negates : std_logic_vector(0 downto 0);
  signal value_d, value : magnitude_field;
  signal exponent_d, exponent : exponent_field;
  signal marks_d, marks : mark_field;

  -- count
  signal counted : magnitude_field;
  signal zeros_d, zeros : std_logic_vector(levels - 1 downto 0);
  signal count_value : magnitude_field;
  signal count_exponent : exponent_field;
  signal count_marks : mark_field;

  -- coarse
  signal coarse_d, coarse : magnitude_field;
  signal leading_d, leading : wide_exponent;
  signal fine_zeros : std_logic_vector(fine_levels - 1 downto 0);
  signal coarse_marks : mark_field;

  -- fine
  signal shifted_d, shifted : magnitude_field;
  signal fine_exponent : wide_exponent;
  signal fine_marks : mark_field;

  -- round
  signal negative, is_minus_two, is_zero : std_logic;
  signal normal : magnitude_field;
  signal rounded_d, rounded : mantissa_field;
  signal round_exponent : wide_exponent;
  signal round_marks_d, round_marks : mark_field;

  -- settle
  signal next_exponent : wide_exponent;
  signal marked, too_small, too_large : std_logic;
  signal result_d : mantissa_field;
  signal result_flags_d, result_flags : std_logic_vector(2 downto 0);
begin
  assert mantissa = 32 or mantissa = 36 report "xfc_normfp1x: mantissa is 32 or 36" severity failure;
  assert inputnormalize <= 1 report "xfc_normfp1x: inputnormalize is 0 or 1" severity failure;
  assert roundnormalize <= 1 report "xfc_normfp1x: roundnormalize is 0 or 1" severity failure;
  assert normspeed <= 2 report "xfc_normfp1x: normspeed is 1 or 2" severity failure;
  assert target <= 2 report "xfc_normfp1x: target is 0, 1 or 2" severity failure;

  -- magnitude: -32 is half of it, one exponent higher
  mantissa_in <= aa(mantissa + exponent_bits downto exponent_bits + 1);
  sign <= mantissa_in(mantissa - 1);
  exponent_d <= aa(exponent_bits downto 1);
  negates(0) <= sign when divider = 1 else '0';
  before_increment <= not mantissa_in when negates = "1" else mantissa_in;
  converted <= std_logic_vector(unsigned(before_increment) + unsigned(negates));
  largest <= converted(mantissa - 1) when divider = 1 else '0';
  value_d <= (converted(magnitude_bits - 1) or largest) & converted(magnitude_bits - 2 downto 0);
  zero <= '1' when aazip = '1' or unsigned(exponent_d) = 0 else '0';
  marks_d <= largest & sign & aanan & (not aanan and not aasat and zero) & (aasat and not aanan);

  magnitude_0 : entity work.xfc_register generic map (magnitude_bits, divider)
    port map (sysclk, enable, value_d, value);
  magnitude_1 : entity work.xfc_register generic map (exponent_bits, divider)
    port map (sysclk, enable, exponent_d, exponent);
  magnitude_2 : entity work.xfc_register generic map (5, divider) port map (sysclk, enable, marks_d, marks);

  -- count
  counted <= not value when divider = 0 and marks(3) = '1' else value;
  count_zeros : entity work.xfc_leading_zeros generic map (magnitude_bits, levels) port map (counted, zeros_d);

  count_0 : entity work.xfc_register generic map (levels, pipelined) port map (sysclk, enable, zeros_d, zeros);
  count_1 : entity work.xfc_register generic map (magnitude_bits, pipelined)
    port map (sysclk, enable, value, count_value);
  count_2 : entity work.xfc_register generic map (exponent_bits, pipelined)
    port map (sysclk, enable, exponent, count_exponent);
  count_3 : entity work.xfc_register generic map (5, pipelined) port map (sysclk, enable, marks, count_marks);

  -- coarse
  shift_coarse : entity work.xfc_shift_left generic map (magnitude_bits, coarse_levels, 2 ** fine_levels)
    port map (count_value, zeros(levels - 1 downto fine_levels), '0', coarse_d);
  leading_d <= std_logic_vector(resize(unsigned(count_exponent), wide_bits) + guard_bits - unsigned(zeros));

  coarse_0 : entity work.xfc_register generic map (magnitude_bits, pipelined)
    port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (wide_bits, pipelined)
    port map (sysclk, enable, leading_d, leading);
  coarse_2 : entity work.xfc_register generic map (fine_levels, pipelined)
    port map (sysclk, enable, zeros(fine_levels - 1 downto 0), fine_zeros);
  coarse_3 : entity work.xfc_register generic map (5, pipelined)
    port map (sysclk, enable, count_marks, coarse_marks);

  -- fine
  shift_fine : entity work.xfc_shift_left generic map (magnitude_bits, fine_levels, 1)
    port map (coarse, fine_zeros, '0', shifted_d);

  fine_0 : entity work.xfc_register generic map (magnitude_bits, fine_border)
    port map (sysclk, enable, shifted_d, shifted);
  fine_1 : entity work.xfc_register generic map (wide_bits, fine_border)
    port map (sysclk, enable, leading, fine_exponent);
  fine_2 : entity work.xfc_register generic map (5, fine_border)
    port map (sysclk, enable, coarse_marks, fine_marks);

  -- round
  negative <= fine_marks(3);
  is_minus_two <= '1' when divider = 0 and negative = '1' and unsigned(shifted) = 0 else '0';
  is_zero <= '1' when shifted(magnitude_bits - 1) = '0' and (divider = 1 or negative = '0') else '0';
  normal <= (shifted(magnitude_bits - 1) or is_minus_two) & shifted(magnitude_bits - 2 downto 0);
  nearest : if adder = 1 and roundnormalize = 1 generate
    signal up : std_logic_vector(0 downto 0);
    signal before_rounding, sum : std_logic_vector(mantissa - guard_bits downto 0);
  begin
    round_even : entity work.xfc_round_even generic map (guard_bits)
      port map (normal(guard_bits), normal(guard_bits - 1 downto 0), '0', up(0));
    before_rounding <= negative & negative & normal(magnitude_bits - 1 downto guard_bits);
    sum <= std_logic_vector(unsigned(before_rounding) + unsigned(up));
    rounded_d(mantissa - 1 downto mantissa - guard_bits + 1) <= (others => negative);
    rounded_d(mantissa - guard_bits downto 0) <= sum;
  end generate;
  jammed : if adder = 1 and roundnormalize = 0 generate
    rounded_d(mantissa - 1 downto mantissa - guard_bits - 1) <= (others => negative);
    rounded_d(mantissa - guard_bits - 2 downto 1) <= normal(magnitude_bits - 1 downto guard_bits + 1);
    rounded_d(0) <= '0' when unsigned(normal(guard_bits downto 0)) = 0 else '1';
  end generate;
  exact : if adder = 0 generate
    rounded_d <= negative & normal;
  end generate;
  round_marks_d <= (fine_marks(4) or is_minus_two) & fine_marks(3 downto 2) &
                   (fine_marks(1) or (is_zero and not fine_marks(2) and not fine_marks(0))) & fine_marks(0);

  round_0 : entity work.xfc_register generic map (mantissa, round_border)
    port map (sysclk, enable, rounded_d, rounded);
  round_1 : entity work.xfc_register generic map (wide_bits, round_border)
    port map (sysclk, enable, fine_exponent, round_exponent);
  round_2 : entity work.xfc_register generic map (5, round_border)
    port map (sysclk, enable, round_marks_d, round_marks);

  -- settle
  next_exponent <= std_logic_vector(unsigned(round_exponent) + unsigned(round_marks(4 downto 4)));
  marked <= round_marks(2) or round_marks(1) or round_marks(0);
  too_small <= '1' when signed(next_exponent) <= 0 else '0';
  too_large <= '1' when signed(next_exponent) >= 960 else '0';
  result_d(mantissa - 1) <= round_marks(3) when marked = '1' else rounded(mantissa - 1);
  result_d(mantissa - 2 downto 0) <= rounded(mantissa - 2 downto 0);
  result_flags_d <= round_marks(2) & (round_marks(1) or (too_small and not marked)) &
                    (round_marks(0) or (too_large and not marked));

  settle_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, next_exponent(exponent_bits - 1 downto 0), cc(exponent_bits downto 1));
  settle_1 : entity work.xfc_register generic map (mantissa, 1)
    port map (sysclk, enable, result_d, cc(mantissa + exponent_bits downto exponent_bits + 1));
  settle_2 : entity work.xfc_register generic map (3, 1)
    port map (sysclk, enable, result_flags_d, result_flags);
  ccsat <= result_flags(0);
  cczip <= result_flags(1);
  ccnan <= result_flags(2);
end rtl;
