-- Normalizes a YDouble value in adder form: for a multiplier or divider (target 0), rounded to the 53 bits of its form,
-- nearest even; or in adder form (target 1), nearest even when roundnormalize is 1, else lost bits are or'ed into the
-- lowest. What comes below exponent 1 is zero, from 7680 on infinite. roundconvert costs cycles alone.
--   step complement:  ones' complement of a negative mantissa; whether it is minus a power of two
--   step bytes:       how many bytes in front are empty
--   step coarse:      shift left by so many bytes
--   step bits:        zeros in front of the first byte
--   step fine:        shift left by so many bits
--   step decide:      what is kept, whether to round up; the exponent
--   step round:       lower half of the carry chain
--   step carry:       upper half
--   step settle:      range and flags
-- Latency 3 + normspeed + roundnormalize * (1 + doublespeed) + doublespeed * roundconvert cycles, 4 to 9: registers
-- behind bytes, bits, decide and settle; a fifth stands behind coarse, then fine, carry, round, complement.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_normfp2x is
  generic (roundconvert : natural; roundnormalize : natural; normspeed : positive; doublespeed : natural;
           target : natural; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(10 * target + 67 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_normfp2x;

architecture rtl of xfc_normfp2x is
  constant exponent_bits  : positive := 13;
  constant guard_bits     : positive := 4;
  constant fraction_bits  : positive := 52;
  constant mantissa       : positive := 64;
  constant magnitude_bits : positive := mantissa - 1;
  constant padded         : positive := 64;                        -- whole bytes
  constant wide_bits      : positive := exponent_bits + 2;         -- exponent below zero and above the field
  constant side_bits      : positive := exponent_bits + 5;
  constant dropped_bits   : positive := magnitude_bits - fraction_bits - 1;
  constant low_bits       : positive := 27;
  constant latency        : positive :=
    doublespeed * roundconvert + roundnormalize * (doublespeed + 1) + normspeed + 3;
  constant coarse_border     : natural := latency / 5;
  constant fine_border       : natural := latency / 6;
  constant carry_border      : natural := latency / 7;
  constant round_border      : natural := latency / 8;
  constant complement_border : natural := latency / 9;

  subtype mantissa_field is std_logic_vector(mantissa - 1 downto 0);
  subtype magnitude_field is std_logic_vector(magnitude_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);            -- two's complement
  subtype side_field is std_logic_vector(side_bits - 1 downto 0);               -- exponent, power, sign, marks
  subtype mark_field is std_logic_vector(3 downto 0);                           -- sign, nan, zip, sat
  constant no_bits : magnitude_field := (others => '0');

  -- complement
  signal mantissa_in : mantissa_field;
  signal exponent_in : std_logic_vector(exponent_bits - 1 downto 0);
  signal sign_in, power_in, zip_in : std_logic;
  signal magnitude_d, magnitude : magnitude_field;
  signal side_d, side : side_field;

  -- bytes, coarse, bits, fine
  signal normal : std_logic_vector(padded - 1 downto 0);
  signal zeros : std_logic_vector(5 downto 0);
  signal fine_side : side_field;

  -- decide
  signal sign, rounds_up, lost : std_logic;
  signal correction : std_logic_vector(2 downto 0);
  signal magnitude_out, complement : magnitude_field;
  signal exact, kept_d, kept : mantissa_field;
  signal front : std_logic_vector(guard_bits - 1 downto 0);
  signal empty : std_logic_vector(dropped_bits downto 0);
  signal up_d, up : std_logic_vector(0 downto 0);
  signal leading_d, leading : wide_exponent;
  signal marks_d, marks : mark_field;

  -- round
  signal low_d, low : std_logic_vector(low_bits downto 0);
  signal high : std_logic_vector(mantissa - 1 downto low_bits);
  signal round_leading : wide_exponent;
  signal round_marks : mark_field;

  -- carry
  signal high_sum : std_logic_vector(mantissa - 1 downto low_bits);
  signal sum_d, sum : mantissa_field;
  signal carry_leading : wide_exponent;
  signal carry_marks : mark_field;

  -- settle
  signal following : unsigned(0 downto 0);
  signal exponent : wide_exponent;
  signal too_small, too_large : std_logic;
  signal value_d : std_logic_vector(10 * target + 67 downto 1);
  signal flags_d, flags : std_logic_vector(2 downto 0);                         -- nan, zip, sat
begin
  assert roundconvert <= 1 report "xfc_normfp2x: roundconvert is 0 or 1" severity failure;
  assert roundnormalize <= 1 report "xfc_normfp2x: roundnormalize is 0 or 1" severity failure;
  assert normspeed <= 3 report "xfc_normfp2x: normspeed is 1 to 3" severity failure;
  assert doublespeed <= 1 report "xfc_normfp2x: doublespeed is 0 or 1" severity failure;
  assert target <= 1 report "xfc_normfp2x: target is 0 or 1" severity failure;
  assert synthesize <= 1 report "xfc_normfp2x: synthesize is 0 or 1" severity failure;

  -- complement: minus a power of two has no 1 behind a 0
  mantissa_in <= aa(mantissa + exponent_bits downto exponent_bits + 1);
  exponent_in <= aa(exponent_bits downto 1);
  sign_in <= mantissa_in(mantissa - 1);
  magnitude_d <= not mantissa_in(magnitude_bits - 1 downto 0) when sign_in = '1' else
                 mantissa_in(magnitude_bits - 1 downto 0);
  power_in <= '1' when target = 1 and sign_in = '1' and
                       (mantissa_in(mantissa - 2 downto 0) and not mantissa_in(mantissa - 1 downto 1)) = no_bits else
              '0';
  zip_in <= '1' when aazip = '1' or unsigned(exponent_in) = 0 else '0';
  side_d <= exponent_in & power_in & sign_in & aanan & zip_in & aasat;

  complement_0 : entity work.xfc_register generic map (magnitude_bits, complement_border)
    port map (sysclk, enable, magnitude_d, magnitude);
  complement_1 : entity work.xfc_register generic map (side_bits, complement_border)
    port map (sysclk, enable, side_d, side);

  -- bytes, coarse, bits, fine
  normalize : entity work.xfc_normalize
    generic map (magnitude_bits, side_bits, 1, coarse_border, 1, fine_border)
    port map (sysclk, enable, magnitude, side(3), side, normal, zeros, fine_side);

  -- decide: an adder's mantissa is complemented again, others keep the missing unit for the rounding
  sign <= fine_side(3);
  correction <= "10" & fine_side(4);   -- four guard bits and the power's one
  leading_d <= std_logic_vector(resize(unsigned(fine_side(side_bits - 1 downto 5)), wide_bits) +
                                unsigned(correction) - unsigned(zeros));
  magnitude_out <= normal(padded - 1 downto padded - magnitude_bits);
  keep_for_adders : if target = 1 generate
    complement <= not magnitude_out when sign = '1' else magnitude_out;
    exact <= sign & (complement(magnitude_bits - 1) or fine_side(4)) & complement(magnitude_bits - 2 downto 0);
    round_even : entity work.xfc_round_even generic map (guard_bits)
      port map (exact(guard_bits), exact(guard_bits - 1 downto 0), '0', rounds_up);
    lost <= '1' when roundnormalize = 0 and unsigned(exact(guard_bits - 1 downto 0)) /= 0 else '0';
    front <= (others => sign);
    kept_d <= front & exact(mantissa - 1 downto guard_bits + 1) & (exact(guard_bits) or lost);
    up_d(0) <= rounds_up when roundnormalize = 1 else '0';
  end generate;
  keep_for_others : if target = 0 generate
    empty <= (others => '0');
    kept_d <= empty & magnitude_out(magnitude_bits - 1 downto dropped_bits);
    round_even : entity work.xfc_round_even generic map (dropped_bits)
      port map (magnitude_out(dropped_bits), magnitude_out(dropped_bits - 1 downto 0), sign, up_d(0));
  end generate;
  marks_d <= sign & fine_side(2) & (fine_side(1) or not normal(padded - 1)) & fine_side(0);

  decide_0 : entity work.xfc_register generic map (mantissa, 1) port map (sysclk, enable, kept_d, kept);
  decide_1 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);
  decide_2 : entity work.xfc_register generic map (wide_bits, 1) port map (sysclk, enable, leading_d, leading);
  decide_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);

  -- round
  low_d <= std_logic_vector(resize(unsigned(kept(low_bits - 1 downto 0)), low_bits + 1) + unsigned(up));

  round_0 : entity work.xfc_register generic map (low_bits + 1, round_border) port map (sysclk, enable, low_d, low);
  round_1 : entity work.xfc_register generic map (mantissa - low_bits, round_border)
    port map (sysclk, enable, kept(mantissa - 1 downto low_bits), high);
  round_2 : entity work.xfc_register generic map (wide_bits, round_border)
    port map (sysclk, enable, leading, round_leading);
  round_3 : entity work.xfc_register generic map (4, round_border) port map (sysclk, enable, marks, round_marks);

  -- carry
  high_sum <= std_logic_vector(unsigned(high) + unsigned(low(low_bits downto low_bits)));
  sum_d <= high_sum & low(low_bits - 1 downto 0);

  carry_0 : entity work.xfc_register generic map (mantissa, carry_border) port map (sysclk, enable, sum_d, sum);
  carry_1 : entity work.xfc_register generic map (wide_bits, carry_border)
    port map (sysclk, enable, round_leading, carry_leading);
  carry_2 : entity work.xfc_register generic map (4, carry_border)
    port map (sysclk, enable, round_marks, carry_marks);

  -- settle: what carries out of a multiplier's fraction is the next exponent; exponents from 7680 on are infinite
  following <= unsigned(sum(fraction_bits + 1 downto fraction_bits + 1)) when target = 0 else "0";
  exponent <= std_logic_vector(unsigned(carry_leading) + following);
  too_small <= '1' when signed(exponent) <= 0 else '0';
  too_large <= '1' when signed(exponent) >= 7680 else '0';
  flags_d <= carry_marks(2) & (not carry_marks(2) and not carry_marks(0) and (carry_marks(1) or too_small)) &
             (not carry_marks(2) and (carry_marks(0) or (too_large and not carry_marks(1))));
  for_adders : if target = 1 generate
    value_d <= sum & exponent(exponent_bits - 1 downto 0);
  end generate;
  for_others : if target = 0 generate
    value_d <= carry_marks(3) & (sum(fraction_bits) or following(0)) & sum(fraction_bits - 1 downto 0) &
               exponent(exponent_bits - 1 downto 0);
  end generate;

  settle_0 : entity work.xfc_register generic map (10 * target + 67, 1) port map (sysclk, enable, value_d, cc);
  settle_1 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, flags_d, flags);

  ccsat <= flags(0);
  cczip <= flags(1);
  ccnan <= flags(2);
end rtl;
