-- Multiplies two YDouble values in multiplier form; their hidden ones are taken for granted. The product is exact
-- before it is brought into the form of the output: rounded to nearest even as an IEEE double (ieeeoutput) or to the 53
-- bits of the multiplier form (multoutput), or with lost bits or'ed into the lowest one in adder form (xoutput, from
-- 1 to 4). inf * 0 is nan; exponent field 0 is zero. What comes below the smallest exponent is zero, what is too large
-- is infinite. roundconvert, doublespeed, outputpipe and device say how many cycles there are; roundnormalize and
-- doubleaccuracy change nothing.
--   step recode:  digits of bb; exponents; flags
--   step twos:    sums of two rows of the product
--   step pairs:   sums of four and of eight rows
--   step quads:   sums of sixteen rows
--   step sum:     the product
--   step decide:  shift, what is kept, in adder form complemented for a negative product; whether it gets a unit
--   step round:   lower half of the carry chain; the exponent, one more where rounding carries into it
--   step carry:   upper half
--   step settle:  the fields; range and flags
-- Latency 7 - 2 * device + roundconvert * (1 + doublespeed) cycles with ieeeoutput, 7 - 2 * device with multoutput,
-- 6 - 2 * device + (roundconvert == 1 ? 1 + doublespeed : outputpipe) with xoutput, 2 to 9: registers behind twos and
-- settle; with more cycles also behind sum, quads, recode, decide, pairs, round, carry, in this order. With synthesize
-- 1 the product is made of multiplier blocks.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_mulfp2x is
  generic (ieeeoutput : natural; xoutput : natural; multoutput : natural; roundconvert : natural;
           roundnormalize : natural; doublespeed : natural; outputpipe : natural; doubleaccuracy : natural;
           device : natural; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(67 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(67 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(67 + 10 * xoutput - 3 * ieeeoutput downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_mulfp2x;

architecture rtl of xfc_mulfp2x is
  constant exponent_bits  : positive := 13;
  constant wide_bits      : positive := exponent_bits + 2;         -- two's complement
  constant bias           : positive := 1023;
  constant fraction_bits  : positive := 52;
  constant mantissa       : positive := fraction_bits + 2;         -- sign, hidden one, fraction
  constant adder_mantissa : positive := 64;
  constant low_bits       : positive := 6;                         -- of the adder form
  constant ieee_exponent  : positive := 11;
  constant top            : positive := 2 * fraction_bits + 1;     -- of the product: 2; below it 1
  constant kept_bits      : positive := fraction_bits + xoutput * (low_bits + 2);
  constant lower_bits     : positive := kept_bits / 2;
  constant latency        : positive :=
    7 - 2 * device + ieeeoutput * roundconvert * (1 + doublespeed) +
    xoutput * (roundconvert * (1 + doublespeed) + (1 - roundconvert) * outputpipe - 1);
  constant sum_border     : natural := boolean'pos(latency >= 3);
  constant quads_border   : natural := boolean'pos(latency >= 4);
  constant recode_border  : natural := boolean'pos(latency >= 5);
  constant decide_border  : natural := boolean'pos(latency >= 6);
  constant pairs_border   : natural := boolean'pos(latency >= 7);
  constant round_border   : natural := boolean'pos(latency >= 8);
  constant carry_border   : natural := boolean'pos(latency >= 9);

  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);
  subtype significand_field is std_logic_vector(mantissa - 1 downto 0);
  subtype kept_field is std_logic_vector(kept_bits - 1 downto 0);
  subtype lower_field is std_logic_vector(lower_bits - 1 downto 0);
  subtype upper_field is std_logic_vector(kept_bits - 1 downto lower_bits);
  subtype mark_field is std_logic_vector(3 downto 0);              -- sign, nan, zip, sat

  -- recode
  signal a_exponent, b_exponent : exponent_field;
  signal a_significand, b_significand : significand_field;
  signal a_zero, b_zero, sign, nan, sat, zip : std_logic;
  signal recode_marks_d, recode_marks, marks : mark_field;
  signal both_exponents_d, both_exponents : std_logic_vector(exponent_bits downto 0);

  -- twos, pairs, quads, sum
  signal twos_exponent_d, exponent : wide_exponent;
  signal product_d : std_logic_vector(2 * mantissa - 1 downto 0);
  signal product : std_logic_vector(top downto 0);

  -- decide
  signal halve : std_logic_vector(0 downto 0);
  signal decide_exponent_d, decide_exponent : wide_exponent;
  signal kept_d, kept : kept_field;
  signal up_d, up : std_logic_vector(0 downto 0);
  signal full_d, full : std_logic_vector(1 downto 0);
  signal decide_marks : mark_field;

  -- round
  signal lower_d, lower : lower_field;
  signal upper : upper_field;
  signal upper_up_d, upper_up, following : std_logic_vector(0 downto 0);
  signal round_exponent_d, round_exponent : wide_exponent;
  signal round_marks : mark_field;

  -- carry
  signal upper_d : upper_field;
  signal rounded_d, rounded : kept_field;
  signal last_exponent : wide_exponent;
  signal last_marks : mark_field;
begin
  assert ieeeoutput + xoutput + multoutput = 1 report "xfc_mulfp2x: one output is 1" severity failure;
  assert roundconvert <= 1 report "xfc_mulfp2x: roundconvert is 0 or 1" severity failure;
  assert roundnormalize <= 1 report "xfc_mulfp2x: roundnormalize is 0 or 1" severity failure;
  assert doublespeed <= 1 report "xfc_mulfp2x: doublespeed is 0 or 1" severity failure;
  assert outputpipe <= 1 report "xfc_mulfp2x: outputpipe is 0 or 1" severity failure;
  assert doubleaccuracy <= 1 report "xfc_mulfp2x: doubleaccuracy is 0 or 1" severity failure;
  assert device <= 2 report "xfc_mulfp2x: device is 0 to 2" severity failure;
  assert synthesize <= 1 report "xfc_mulfp2x: synthesize is 0 or 1" severity failure;

  -- recode
  a_exponent <= aa(exponent_bits downto 1);
  b_exponent <= bb(exponent_bits downto 1);
  a_zero <= '1' when aasat = '0' and (aazip = '1' or unsigned(a_exponent) = 0) else '0';
  b_zero <= '1' when bbsat = '0' and (bbzip = '1' or unsigned(b_exponent) = 0) else '0';
  sign <= aa(mantissa + exponent_bits) xor bb(mantissa + exponent_bits);
  nan <= aanan or bbnan or (aasat and b_zero) or (a_zero and bbsat);
  sat <= not nan and (aasat or bbsat);
  zip <= not nan and not sat and (a_zero or b_zero);
  recode_marks_d <= sign & nan & zip & sat;
  both_exponents_d <= std_logic_vector(resize(unsigned(a_exponent), exponent_bits + 1) + unsigned(b_exponent));

  recode_0 : entity work.xfc_register generic map (4, recode_border)
    port map (sysclk, enable, recode_marks_d, recode_marks);
  recode_1 : entity work.xfc_register generic map (exponent_bits + 1, recode_border)
    port map (sysclk, enable, both_exponents_d, both_exponents);

  -- twos, pairs, quads, sum
  twos_exponent_d <= std_logic_vector(resize(unsigned(both_exponents), wide_bits) - bias);
  a_significand <= "01" & aa(fraction_bits + exponent_bits downto exponent_bits + 1);
  b_significand <= "01" & bb(fraction_bits + exponent_bits downto exponent_bits + 1);
  multiply : entity work.xfc_product
    generic map (mantissa, synthesize, recode_border, 0, pairs_border, quads_border, 1)
    port map (sysclk, enable, a_significand, b_significand, product_d);

  sum_0 : entity work.xfc_registers generic map (4, 1 + pairs_border + quads_border + sum_border)
    port map (sysclk, enable, recode_marks, marks);
  sum_1 : entity work.xfc_registers generic map (wide_bits, 1 + pairs_border + quads_border + sum_border)
    port map (sysclk, enable, twos_exponent_d, exponent);
  sum_2 : entity work.xfc_register generic map (top + 1, sum_border)
    port map (sysclk, enable, product_d(top downto 0), product);

  -- decide: a product from 2 on is halved, in adder form one whose exponent field would be 0
  decide_exponent_d <= std_logic_vector(unsigned(exponent) + unsigned(halve));

  keep_for_adders : if xoutput = 1 generate
    signal magnitude, complement : kept_field;
    signal lost : std_logic;
  begin
    halve <= "1" when unsigned(exponent) = 0 else "0";
    magnitude <= '0' & product(top downto top + 2 - kept_bits) when halve = "1" else
                 product(top downto top + 1 - kept_bits);
    lost <= '0' when unsigned(product(top - kept_bits downto 0)) = 0 and
                     (halve(0) and product(top + 1 - kept_bits)) = '0' else '1';
    complement <= not magnitude when marks(3) = '1' else magnitude;
    kept_d <= complement(kept_bits - 1 downto 1) & (complement(0) or lost);
    up_d(0) <= marks(3) and not lost;
  end generate;

  keep_for_others : if xoutput = 0 generate
    constant lowest : positive := top - 1 - fraction_bits;         -- unless halved
    signal rest : std_logic;
    signal dropped : std_logic_vector(2 downto 0);
  begin
    halve <= product(top downto top);
    rest <= '0' when unsigned(product(lowest - 2 downto 0)) = 0 else '1';
    kept_d <= product(top - 1 downto lowest + 1) when halve = "1" else product(top - 2 downto lowest);
    dropped <= product(lowest downto lowest - 1) & rest when halve = "1" else product(lowest - 1) & rest & rest;
    round_even : entity work.xfc_round_even generic map (3) port map (kept_d(0), dropped, '0', up_d(0));
  end generate;

  full_d(0) <= '1' when unsigned(not kept_d(lower_bits - 1 downto 0)) = 0 else '0';
  full_d(1) <= '1' when unsigned(not kept_d(kept_bits - 1 downto lower_bits)) = 0 else '0';

  decide_0 : entity work.xfc_register generic map (kept_bits, decide_border) port map (sysclk, enable, kept_d, kept);
  decide_1 : entity work.xfc_register generic map (1, decide_border) port map (sysclk, enable, up_d, up);
  decide_2 : entity work.xfc_register generic map (2, decide_border) port map (sysclk, enable, full_d, full);
  decide_3 : entity work.xfc_register generic map (wide_bits, decide_border)
    port map (sysclk, enable, decide_exponent_d, decide_exponent);
  decide_4 : entity work.xfc_register generic map (4, decide_border) port map (sysclk, enable, marks, decide_marks);

  -- round: what is carried up to 2 has the next exponent; nothing is in adder form
  lower_d <= std_logic_vector(unsigned(kept(lower_bits - 1 downto 0)) + unsigned(up));
  upper_up_d(0) <= up(0) and full(0);
  following(0) <= up(0) and full(0) and full(1) when xoutput = 0 else '0';
  round_exponent_d <= std_logic_vector(unsigned(decide_exponent) + unsigned(following));

  round_0 : entity work.xfc_register generic map (lower_bits, round_border) port map (sysclk, enable, lower_d, lower);
  round_1 : entity work.xfc_register generic map (kept_bits - lower_bits, round_border)
    port map (sysclk, enable, kept(kept_bits - 1 downto lower_bits), upper);
  round_2 : entity work.xfc_register generic map (1, round_border) port map (sysclk, enable, upper_up_d, upper_up);
  round_3 : entity work.xfc_register generic map (wide_bits, round_border)
    port map (sysclk, enable, round_exponent_d, round_exponent);
  round_4 : entity work.xfc_register generic map (4, round_border)
    port map (sysclk, enable, decide_marks, round_marks);

  -- carry
  upper_d <= std_logic_vector(unsigned(upper) + unsigned(upper_up));
  rounded_d <= upper_d & lower;

  carry_0 : entity work.xfc_register generic map (kept_bits, carry_border)
    port map (sysclk, enable, rounded_d, rounded);
  carry_1 : entity work.xfc_register generic map (wide_bits, carry_border)
    port map (sysclk, enable, round_exponent, last_exponent);
  carry_2 : entity work.xfc_register generic map (4, carry_border) port map (sysclk, enable, round_marks, last_marks);

  -- settle
  to_ieee : if ieeeoutput = 1 generate
    signal result_d : std_logic_vector(63 downto 0);
  begin
    pack : entity work.xfc_pack_ieee generic map (ieee_exponent, fraction_bits, wide_bits)
      port map (last_exponent, rounded, last_marks, result_d);

    settle_0 : entity work.xfc_register generic map (64, 1) port map (sysclk, enable, result_d, cc);
    ccsat <= '0';
    cczip <= '0';
    ccnan <= '0';
  end generate;

  internal : if ieeeoutput = 0 generate
    constant result_bits : positive := mantissa + xoutput * (adder_mantissa - mantissa);
    signal marked, too_small, too_large : std_logic;
    signal flags_d, flags : std_logic_vector(2 downto 0);          -- nan, zip, sat
    signal result_d : std_logic_vector(result_bits + exponent_bits - 1 downto 0);
  begin
    marked <= last_marks(2) or last_marks(1) or last_marks(0);
    too_small <= '1' when signed(last_exponent) <= 0 else '0';
    too_large <= '1' when signed(last_exponent) >= 7680 else '0';
    flags_d <= last_marks(2) & (last_marks(1) or (too_small and not marked)) &
               (last_marks(0) or (too_large and not marked));
    result_d(exponent_bits - 1 downto 0) <= last_exponent(exponent_bits - 1 downto 0);

    for_adders : if xoutput = 1 generate
      result_d(result_bits + exponent_bits - 1 downto kept_bits + exponent_bits) <= (others => last_marks(3));
      result_d(kept_bits + exponent_bits - 1 downto exponent_bits) <= rounded;
    end generate;

    for_others : if xoutput = 0 generate
      result_d(result_bits + exponent_bits - 1 downto exponent_bits) <= last_marks(3) & '1' & rounded;
    end generate;

    settle_0 : entity work.xfc_register generic map (result_bits + exponent_bits, 1)
      port map (sysclk, enable, result_d, cc);
    settle_1 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, flags_d, flags);
    ccsat <= flags(0);
    cczip <= flags(1);
    ccnan <= flags(2);
  end generate;
end rtl;
