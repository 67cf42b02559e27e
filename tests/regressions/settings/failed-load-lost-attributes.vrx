<!-- Copyright (c) Zorvane Sound ">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name></name>
				<param_list>
					<frequency_hz>37.000000</frequency_hz>
					<q_factor>0.644999981</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" selected="true" channel="both" auto_ctl="0">
			<filter_description>
				<type>LoShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>7.5</gain_db>
					<frequency_hz>90.000000</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
